#include "tarvo/uuid.hpp"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/json_file.h"
#include "tool/key_source.h"
#include "tool/scope_writer.h"
#include "tool/text.h"
#include "tool/tree_text.h"

#include <fmt/format.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace tool {

namespace {

using nlohmann::json;

// A key of the file that is still to be imported.
struct PendingKey {
    const json* content;
    KeyChange key;
    std::string place; // in the file, for error messages
};

[[noreturn]] void fail(const std::string& place, const std::string& reason) {
    throw Failure((place.empty() ? "the file" : place) + ": " + reason);
}

const json& member(const json& object, const char* name, const std::string& place) {
    const auto found = object.find(name);
    if (found == object.end())
        fail(place, fmt::format("has no \"{}\"", name));
    return *found;
}

std::string textMember(const json& object, const char* name, const std::string& place) {
    const json& value = member(object, name, place);
    if (!value.is_string())
        fail(place, fmt::format("\"{}\" is no text", name));
    return value.get<std::string>();
}

std::int32_t integerMember(const json& object, const std::string& place) {
    using Limits = std::numeric_limits<std::int32_t>;
    const json& value = member(object, "value", place);
    // A number beyond 63 bits comes as unsigned or as a real, neither of which is taken.
    if (!value.is_number_integer() || value > Limits::max() || value < Limits::min())
        fail(place, "\"value\" is no number from -2147483648 to 2147483647");
    return value.get<std::int32_t>();
}

void importValue(const KeyChange& key, const std::string& name, const json& value,
                 const std::string& place) {
    if (!value.is_object())
        fail(place, "is no object");
    const std::string type = textMember(value, "type", place);
    if (type == "string") {
        key.setString(name, textMember(value, "value", place));
    } else if (type == "integer") {
        key.setInteger(name, integerMember(value, place));
    } else if (type == "uuid") {
        const auto uuid = tarvo::UUID::parse(toUtf16(textMember(value, "value", place)));
        if (!uuid)
            fail(place, "\"value\" is no identifier");
        key.setUuid(name, *uuid);
    } else if (type == "empty") {
        key.setEmpty(name);
    } else {
        fail(place, "\"type\" is none of string, integer, uuid and empty");
    }
}

const json& objectMember(const json& object, const char* name, const std::string& place) {
    const json& content = member(object, name, place);
    if (!content.is_object())
        fail(place, fmt::format("\"{}\" is no object", name));
    return content;
}

// Keys can stand as deep as the file says, so those that are still to come stand in a list.
void importKeys(const json& root, KeyChange target) {
    std::vector<PendingKey> pending;
    pending.push_back({&root, std::move(target), ""});
    while (!pending.empty()) {
        const PendingKey next = std::move(pending.back());
        pending.pop_back();
        if (!next.content->is_object())
            fail(next.place, "is no object");
        for (const auto& [name, value] : objectMember(*next.content, "values", next.place).items())
            importValue(next.key, name, value, next.place + "/" + name);
        for (const auto& [name, key] : objectMember(*next.content, "keys", next.place).items())
            pending.push_back({&key, next.key.subKey(name), next.place + "/" + name});
    }
}

} // namespace

void exportRegistry(const std::string& path, Scope scope) {
    const Library library;
    auto key = openScopeKey(library, scope == Scope::machine, toUtf16(path));
    fmt::print("{}", treeAsJson(std::move(key)));
}

void importRegistry(const std::string& file, const std::string& path, Scope scope) {
    const json content = readJson(file);
    const Library library;
    const ScopeWriter writer(library, scope == Scope::machine);
    importKeys(content, writer.key(path));
    writer.commit();
}

} // namespace tool
