// One definition file, from its words to libraries and what they define. Only what the grammar
// (docs/definition-language.md) says is looked at here; whether names, identifiers and types make
// sense is checked when all files are read.
#pragma once

#include "companions/idl-parser/document.h"
#include "companions/idl-parser/token_reader.h"
#include "companions/idl-parser/type_parser.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace TARVO::idl {

class Parser {
  public:
    // The types of the file that need a look later are added to `uses`.
    Parser(Document& document, SourceFile& file, Errors& errors, std::vector<TypeUse>& uses);

    // To be called once.
    void parse();

  private:
    // What stands before a declaration.
    struct Header {
        std::string_view documentation;
        Details details;
    };

    template <class Parse>
    bool statement(char separator, Parse parse);
    template <class Parse>
    void block(char separator, Parse parse);

    Header parseHeader();
    void parseDeclaration();
    void parseImport(const Header& header);
    void parseLibrary(const Header& header);
    void parseItem();
    Item& startItem(std::int32_t kind, const Header& header);
    void parseCategory(const Header& header);
    void parseEnumeration(const Header& header);
    void parseEnumerator(std::uint64_t& nextValue);
    void parseInterface(Header header);
    std::span<const std::string_view> parseTemplateArguments();
    void parseMethod();
    void parseParameter();
    std::uint32_t parseDirection();
    const Details* keepDetails(const Details& details);
    void requireIdentifier(const Details& details, std::string_view kind, std::string_view name);
    std::span<Item* const> keepItems(std::vector<Item*>& items, std::size_t first);

    Document& document_;
    SourceFile& file_;
    TokenReader reader_;
    TypeParser types_;
    Library* library_ = nullptr; // the one that is being read, and what it has so far
    std::vector<Item*> categories_;
    std::vector<Item*> enumerations_;
    std::vector<Item*> interfaces_;
    std::vector<Item*> members_; // of all items that are being read, the innermost last
};

} // namespace TARVO::idl
