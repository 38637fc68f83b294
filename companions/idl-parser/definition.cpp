#include "companions/idl-parser/definition.h"

#include "companions/idl-parser/declarations.h"
#include "companions/idl-parser/imports.h"
#include "companions/idl-parser/parser.h"
#include "companions/idl-parser/types.h"
#include "tarvo/reference.hpp"

#include <string>
#include <vector>

namespace TARVO::idl {
namespace {

// Names and types make sense only if nothing is missing that would have defined some.
void fill(Document& document, Errors& errors, const std::u16string& path, const ReadFile& read) {
    Imports imports(document, errors, read);
    std::vector<TypeUse> typeUses;
    imports.open(path);
    for (std::size_t i = 0; i < document.files().size(); ++i) {
        SourceFile& file = *document.files()[i];
        Parser(document, file, errors, typeUses).parse();
        imports.follow(file);
    }
    if (!errors.empty())
        return;
    imports.check();
    const Declarations declarations(document, errors);
    resolveTypes(typeUses, declarations, errors);
    checkInterfaces(document, errors);
}

} // namespace

Document* readDefinition(const char16_t* path, const ReadFile& read) {
    Errors errors;
    auto document = tarvo::Reference<Document>::adopt(new Document());
    try {
        if (path == nullptr || *path == u'\0')
            errors.addFatal({}, "No definition file is named.");
        else
            fill(*document, errors, path, read);
    } catch (const TooManyErrors&) {
        // The errors know it.
    }
    if (!errors.empty())
        return new Document(errors.text());
    document->showLibraries();
    return document.detach();
}

} // namespace TARVO::idl
