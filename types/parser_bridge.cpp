#include "types/parser_bridge.h"

#include "core/environment.h"
#include "core/link_error.h"
#include "platform/module.h"
#include "tarvo/text.hpp"

#include <charconv>
#include <string>

namespace TARVO {

namespace {

std::u16string number(std::uint32_t value, int base) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, base).ptr;
    return {digits, end};
}

class IDLParserModule {
  public:
    IDLParserModule() : module_(moduleFolder() + u"TARVOIDLParser.dll") {
        if (!module_) {
            const std::uint32_t error = module_.error().number;
            throw vask_link_error(u"TARVO IDL Parser DLL failed to load with error " +
                                  number(error, 10) + u" (0x" + number(error, 16) + u")");
        }
        parse_ = reinterpret_cast<VaskIDLParseFunction*>(module_.find("VaskIDLParse"));
        if (parse_ == nullptr)
            throw vask_link_error(u"failed to obtain VaskIDLParse from parser module");
    }

    ParseResultHolder parse(const char16_t* definition) const {
        return ParseResultHolder::adopt(parse_(definition));
    }

  private:
    platform::LoadedModule module_;
    VaskIDLParseFunction* parse_ = nullptr;
};

} // namespace

ParseResultHolder parseDefinition(const char16_t* definition) {
    static const IDLParserModule parser;
    ParseResultHolder result = parser.parse(definition);
    if (!result)
        throw vask_link_error(RC_NULL_POINTER);
    tarvo::String message;
    result->table->getErrorMessage(result->me, message.pair());
    if (!message.text().empty())
        throw vask_link_error(message.text());
    return result;
}

} // namespace TARVO
