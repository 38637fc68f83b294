#include "companions/idl-parser/type_parser.h"

#include <algorithm>

namespace TARVO::idl {

Type* TypeParser::parseMethodResult() {
    return reader_.takeIf("void") ? document_.builtInType("void") : parse();
}

Type* TypeParser::parse() {
    open_.clear();
    arguments_.clear();
    for (;;) {
        Type* type = parseName();
        if (type->kind == TARVO_IDL_INTERFACE_TYPE && reader_.takeIf('<')) {
            open_.push_back({type, arguments_.size()});
            continue;
        }
        type = parseBrackets(type);
        while (!open_.empty()) {
            arguments_.push_back(type);
            if (reader_.takeIf(','))
                break;
            if (!reader_.takeIf('>'))
                reader_.unexpected("',' or '>'");
            type = parseBrackets(close());
        }
        if (open_.empty())
            return type;
    }
}

// A name that isn't the language's own is taken for an interface's until it is looked up.
Type* TypeParser::parseName() {
    const std::string_view name = reader_.expect(TokenKind::name, "a type").text;
    if (Type* type = document_.builtInType(name)) {
        if (type->kind == TARVO_IDL_VOID)
            reader_.report(name, "'void' is for the results of methods alone");
        return type;
    }
    const auto argument = std::find(templateArguments_.begin(), templateArguments_.end(), name);
    if (argument != templateArguments_.end()) {
        Type* type = document_.make<Type>(document_, TARVO_IDL_TEMPLATE_ARGUMENT);
        type->templateArgumentIndex =
            static_cast<std::int32_t>(argument - templateArguments_.begin());
        return type;
    }
    Type* type = document_.make<Type>(document_, TARVO_IDL_INTERFACE_TYPE);
    uses_.push_back({type, library_, name});
    return type;
}

Type* TypeParser::parseBrackets(Type* element) {
    const std::string_view bracket = reader_.token().text;
    if (!reader_.takeIf('['))
        return element;
    reader_.expect(']');
    Type* type = document_.make<Type>(document_, TARVO_IDL_ARRAY);
    type->arguments = document_.keep<Type*>(std::span<Type* const>(&element, 1));
    uses_.push_back({type, library_, bracket});
    return type;
}

// Ends the innermost open type, which takes the arguments since its beginning.
Type* TypeParser::close() {
    const auto [type, first] = open_.back();
    open_.pop_back();
    type->arguments = document_.keep<Type*>(std::span<Type* const>(arguments_).subspan(first));
    arguments_.resize(first);
    return type;
}

} // namespace TARVO::idl
