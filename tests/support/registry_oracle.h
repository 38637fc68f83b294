// What a registry file means, by the definition of its language: four regular expressions and the
// parser's steps, transcribed as they are told, with none of the reader's own ways. It is slow, and
// its expressions recurse as deep as a tag is long: it is for texts of some 1,500 bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

struct OracleValue {
    std::uint32_t type = 0;
    std::int32_t integer = 0;
    std::u16string text;

    bool operator==(const OracleValue&) const = default;
};

struct OracleNode {
    std::map<std::u16string, OracleValue> values;
    std::map<std::u16string, std::shared_ptr<OracleNode>> subKeys;
};

struct OracleResult {
    std::int32_t result; // 0; 502: malformed; -1: the file's id is the known one
    std::shared_ptr<OracleNode> root;
    std::u16string id; // the file's if it has one, else the known one
    bool idSeen;
};

OracleResult parseByExpressions(std::string_view bytes, std::u16string_view knownId);

// One match of the tag expression. Its groups are views of the bytes; groups[0] is the whole match.
struct OracleTag {
    std::size_t begin;
    std::size_t end;
    std::array<std::optional<std::string_view>, 8> groups;
};

struct OracleAttribute {
    std::string_view name;
    std::string_view value;
};

std::vector<OracleTag> tagsByExpression(std::string_view bytes);

// The attributes in group 3 of a tag, all of them in their order.
std::vector<OracleAttribute> attributesByExpression(std::string_view text);

std::string decodeEntitiesByExpression(std::string_view bytes);

} // namespace tests
