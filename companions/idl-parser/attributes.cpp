#include "companions/idl-parser/attributes.h"

#include "companions/idl-parser/text.h"
#include "tarvo/uuid.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TARVO::idl {
namespace {

// An identifier without braces; the lexer has counted its characters.
std::optional<tarvo::UUID> parseIdentifier(std::string_view text) {
    std::u16string braced = u"{";
    braced.append(text.begin(), text.end()).append(u"}");
    return tarvo::UUID::parse(braced);
}

tarvo::UUID expectIdentifier(TokenReader& reader) {
    const std::string_view text = reader.expectIdentifier();
    const auto identifier = parseIdentifier(text);
    if (!identifier)
        reader.report(text, inQuotes(text) + " is no identifier: they look like " +
                                "3b78cdeb-7fe8-4542-b58b-26205774d82a");
    else if (identifier->isNil())
        reader.report(text, "the identifier with nothing but zeros stands for none");
    return identifier.value_or(tarvo::UUID());
}

std::string_view expectValue(TokenReader& reader) {
    const TokenKind kind = reader.token().kind;
    if (kind != TokenKind::quoted && kind != TokenKind::number && kind != TokenKind::name)
        reader.unexpected("the value of the attribute: a quoted text, a number or a name");
    return reader.take().text;
}

void reportDuplicates(TokenReader& reader, std::vector<Attribute> attributes) {
    std::stable_sort(attributes.begin(), attributes.end(),
                     [](const auto& left, const auto& right) { return left.name < right.name; });
    for (std::size_t i = 1; i < attributes.size(); ++i)
        if (attributes[i].name == attributes[i - 1].name)
            reader.report(attributes[i].name,
                          "the attribute " + inQuotes(attributes[i].name) + " is there twice");
}

bool isVersion(std::string_view text) {
    for (;;) {
        std::int32_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || text.front() == '-')
            return false;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (text.empty())
            return true;
        if (text.front() != '.')
            return false;
        text.remove_prefix(1);
    }
}

void parseList(TokenReader& reader, Details& details, std::vector<Attribute>& attributes) {
    do {
        const Attribute attribute{reader.expectName("the name of an attribute"), {}};
        attributes.push_back(attribute);
        if (attribute.name == "uuid") {
            details.hasIdentifier = true;
            details.uuid = expectIdentifier(reader);
            reader.expect(')');
        } else if (reader.takeIf('(')) {
            attributes.back().value = expectValue(reader);
            reader.expect(')');
        }
    } while (reader.takeIf(','));
    if (!reader.takeIf(']'))
        reader.unexpected("',' or ']'");
}

// Behind a list that can't be read, what it belongs to still can.
void skipList(TokenReader& reader) {
    while (!reader.atEnd() && !reader.token().is('{') && !reader.token().is('}') &&
           !reader.token().is(';'))
        if (reader.take().is(']'))
            return;
}

} // namespace

Details parseAttributes(TokenReader& reader, Document& document) {
    Details details;
    if (!reader.takeIf('['))
        return details;
    std::vector<Attribute> attributes;
    try {
        parseList(reader, details, attributes);
    } catch (const SyntaxError&) {
        details.hasIdentifier = true; // it may be in what can't be read
        skipList(reader);
    }
    reportDuplicates(reader, attributes);
    std::erase_if(attributes, [](const Attribute& attribute) { return attribute.name == "uuid"; });
    details.attributes = document.keep<Attribute>(attributes);
    return details;
}

void checkVersion(TokenReader& reader, const Details& details) {
    for (const Attribute& attribute : details.attributes)
        if (attribute.name == "version" && !isVersion(attribute.value))
            reader.report(attribute.value.empty() ? attribute.name : attribute.value,
                          "a version is numbers with points between them, such as 1.2.0");
}

} // namespace TARVO::idl
