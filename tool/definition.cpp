#include "tool/definition.h"

#include "platform/file.h"
#include "tarvo/text.hpp"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"

#include <filesystem>
#include <fmt/format.h>

namespace tool {

namespace {

Definition::DefinedLibrary describe(IVaskIDLLibrary& library) {
    const IVaskIDLLibraryTable& table = *library.table;
    Definition::DefinedLibrary described;
    described.uuid = *table.getUUID(library.me);
    tarvo::String text;
    table.getName(library.me, text.pair());
    described.name = toUtf8(text.text());
    tarvo::ConstantString version(u"version");
    text.text().clear();
    if (table.getAttribute(library.me, version.pair(), text.pair()) == RC_OK)
        described.version = toUtf8(text.text());
    described.categories = table.getCategoryCount(library.me);
    described.enumerations = table.getEnumerationCount(library.me);
    described.interfaces = table.getInterfaceCount(library.me);
    return described;
}

} // namespace

Definition::Definition(const Library& library, const std::string& path)
    : path_(std::filesystem::absolute(std::filesystem::path(toUtf16(path))).u16string()),
      parser_(toUtf16(library.folder() + "TARVOIDLParser.dll")) {
    if (!TARVO::platform::fileExists(path_))
        throw Failure("there is no file " + path);
    if (!parser_)
        throw Failure(fmt::format("cannot load the definition parser {}TARVOIDLParser.dll: {}; it "
                                  "belongs beside TARVO.dll",
                                  library.folder(), systemText(parser_.error().text)));
    auto* const parse = reinterpret_cast<VaskIDLParseFunction*>(parser_.find("VaskIDLParse"));
    if (parse == nullptr)
        throw Failure(fmt::format("{}TARVOIDLParser.dll is no definition parser; install the "
                                  "package again",
                                  library.folder()));
    Progress::say("Reading " + path);
    result_ = tarvo::Reference<IVaskIDLParseResult>::adopt(parse(path_.c_str()));
    tarvo::String message;
    result_->table->getErrorMessage(result_->me, message.pair());
    if (!message.text().empty())
        throw Failure("the definition has mistakes\n" + toUtf8(message.text()));
}

std::vector<Definition::DefinedLibrary> Definition::libraries() const {
    std::vector<DefinedLibrary> libraries;
    const std::int32_t count = result_->table->getLibraryCount(result_->me);
    for (std::int32_t i = 0; i < count; ++i) {
        tarvo::Reference<IVaskIDLLibrary> library;
        require(
            result_->table->getLibrary(result_->me, static_cast<std::uint32_t>(i), library.out()),
            "cannot read the definition");
        libraries.push_back(describe(*library));
    }
    return libraries;
}

} // namespace tool
