#include "tests/support/registry_difference.h"

#include "registry/registry_parser.h"
#include "tarvo/result.h"
#include "tests/support/registry_oracle.h"

#include <algorithm>

namespace tests {
namespace {

using namespace TARVO;

// The same bytes at the same place, not only equal ones.
bool isSameView(std::string_view a, std::string_view b) {
    return a.data() == b.data() && a.size() == b.size();
}

bool isSameDecoding(std::string_view bytes) {
    std::string decoded;
    decodeEntities(bytes, decoded);
    return decoded == decodeEntitiesByExpression(bytes);
}

std::string attributesDifference(std::string_view attributes) {
    AttributeScanner scanner(attributes);
    std::string_view name;
    std::string_view value;
    for (const OracleAttribute& expected : attributesByExpression(attributes)) {
        if (!scanner.next(name, value)) {
            return "attribute missed";
        }
        if (name != expected.name || !isSameView(value, expected.value)) {
            return "attribute read differently";
        }
        if (!isSameDecoding(value)) {
            return "references in an attribute";
        }
    }
    return scanner.next(name, value) ? "attribute invented" : "";
}

std::string elementDifference(const MarkupTag& tag, const OracleTag& expected) {
    const auto& groups = expected.groups;
    if (tag.isElement != groups[4].has_value()) {
        return "kind of tag";
    }
    if (!tag.isElement) {
        return "";
    }
    if (tag.isEnd == groups[1]->empty()) {
        return "slash of an end tag";
    }
    if (tag.isSelfClosed != (groups[4] == "/>")) {
        return "closing of a tag";
    }
    if (!isSameView(tag.name, *groups[2]) || !isSameView(tag.attributes, *groups[3])) {
        return "name or attributes of a tag";
    }
    return attributesDifference(tag.attributes);
}

std::string tokensDifference(std::string_view bytes) {
    MarkupScanner scanner(bytes);
    MarkupTag tag;
    std::size_t position = 0;
    for (const OracleTag& expected : tagsByExpression(bytes)) {
        if (!scanner.next(tag)) {
            return "tag missed";
        }
        const std::string_view before = bytes.substr(position, expected.begin - position);
        position = expected.end;
        if (tag.position != expected.begin || !isSameView(scanner.rest(), bytes.substr(position)) ||
            !isSameView(tag.textBefore, before)) {
            return "bounds of a tag";
        }
        if (!isSameDecoding(before)) {
            return "references in a text";
        }
        if (std::string difference = elementDifference(tag, expected); !difference.empty()) {
            return difference;
        }
    }
    if (scanner.next(tag)) {
        return "tag invented";
    }
    return isSameDecoding(bytes) ? "" : "references in the whole text";
}

std::string treeDifference(const TarvoRegistry& node, const OracleNode& expected) {
    if (node.values.size() != expected.values.size() ||
        node.subKeys.size() != expected.subKeys.size()) {
        return "number of entries in a key";
    }
    std::string difference;
    node.values.forEach([&](const NamedValue& value) {
        const auto found = expected.values.find(std::u16string(value.name()));
        const OracleValue seen = {static_cast<std::uint32_t>(value.type()), value.integer(),
                                  std::u16string(value.text())};
        if (found == expected.values.end() || found->second != seen) {
            difference = "value";
        }
    });
    node.subKeys.forEach([&](const TarvoRegistry& key) {
        const auto found = expected.subKeys.find(std::u16string(key.name()));
        if (found == expected.subKeys.end()) {
            difference = "key";
        } else if (difference.empty()) {
            difference = treeDifference(key, *found->second);
        }
    });
    return difference;
}

// As the oracle tells it.
std::int32_t numberOf(ParseOutcome outcome) {
    switch (outcome) {
    case ParseOutcome::complete:
        return 0;
    case ParseOutcome::unchanged:
        return -1;
    case ParseOutcome::malformed:
        break;
    }
    return RC_BAD_REGISTRY_FILE;
}

ParseOutcome parseInPieces(RegistryParser& parser, std::string_view bytes, std::size_t pieceSize) {
    auto outcome = ParseOutcome::complete;
    for (std::size_t end = 0; outcome == ParseOutcome::complete && end < bytes.size();) {
        end = std::min(end + pieceSize, bytes.size());
        outcome = parser.parse(bytes.substr(parser.taken(), end - parser.taken()));
    }
    return outcome;
}

std::string parseDifference(std::string_view bytes, std::u16string_view knownId,
                            const OracleResult& expected, std::size_t pieceSize) {
    const tarvo::Reference<TarvoRegistry> root = TarvoRegistry::makeRoot();
    RegistryParser parser(root, std::u16string(knownId));
    const auto result = numberOf(parseInPieces(parser, bytes, pieceSize));
    if (result != expected.result) {
        return "result " + std::to_string(result) + " in the place of " +
               std::to_string(expected.result);
    }
    if (result != 0) {
        return "";
    }
    if (parser.idSeen() != expected.idSeen || parser.id() != expected.id) {
        return "id";
    }
    return treeDifference(*root, *expected.root);
}

} // namespace

std::string registryDifference(std::string_view bytes, std::u16string_view knownId) {
    constexpr std::size_t kSmallPiece = 50; // as long as elements are
    const OracleResult expected = parseByExpressions(bytes, knownId);
    std::string difference = tokensDifference(bytes);
    for (const std::size_t pieceSize : {bytes.size(), kSmallPiece})
        if (difference.empty())
            difference = parseDifference(bytes, knownId, expected, pieceSize);
    return difference;
}

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        if (byte == '"' || byte == '\\') {
            text += '\\';
            text += byte;
        } else if (byte >= ' ' && byte <= '~') {
            text += byte;
        } else {
            // Always three octal digits, so that a digit behind them is not taken for one of them.
            const auto value = static_cast<unsigned char>(byte);
            text += '\\';
            text += static_cast<char>('0' + (value >> 6));
            text += static_cast<char>('0' + (value >> 3 & 7));
            text += static_cast<char>('0' + (value & 7));
        }
    }
    return text;
}

} // namespace tests
