#include "core/lower_case.h"
#include "tarvo/uuid.hpp"
#include "tool/commands.h"
#include "tool/json_file.h"
#include "tool/json_member.h"
#include "tool/key_source.h"
#include "tool/output.h"
#include "tool/scope_writer.h"
#include "tool/text.h"
#include "tool/tree_text.h"

#include <cstdint>
#include <fmt/format.h>
#include <map>
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

void importValue(const KeyChange& key, const std::string& name, const json& value,
                 const std::string& place) {
    if (!value.is_object())
        failAt(place, "is no object");
    const std::string type = textMember(value, "type", place);
    if (type == "string") {
        key.setString(name, textMember(value, "value", place));
    } else if (type == "integer") {
        key.setInteger(name, integerMember<std::int32_t>(value, "value", place));
    } else if (type == "uuid") {
        const auto uuid = tarvo::UUID::parse(toUtf16(textMember(value, "value", place)));
        if (!uuid)
            failAt(place, "\"value\" is no identifier");
        key.setUuid(name, *uuid);
    } else if (type == "empty") {
        key.setEmpty(name);
    } else {
        failAt(place, "\"type\" is none of string, integer, uuid and empty");
    }
}

// The registry tells names apart without regard to case, JSON with it.
void refuseSameNames(const json& members, const std::string& place) {
    std::map<std::u16string, std::string> names;
    for (const auto& [name, member] : members.items()) {
        const auto [same, isNew] = names.emplace(TARVO::lowerCase(toUtf16(name)), name);
        if (!isNew)
            failAt(place, fmt::format("\"{}\" and \"{}\" are one name", same->second, name));
    }
}

// Keys can stand as deep as the file says, so those that are still to come stand in a list.
void importKeys(const json& root, KeyChange target) {
    std::vector<PendingKey> pending;
    pending.push_back({&root, std::move(target), ""});
    while (!pending.empty()) {
        const PendingKey next = std::move(pending.back());
        pending.pop_back();
        if (!next.content->is_object())
            failAt(next.place, "is no object");
        const json& values = objectMember(*next.content, "values", next.place);
        refuseSameNames(values, next.place);
        for (const auto& [name, value] : values.items())
            importValue(next.key, name, value, next.place + "/" + name);
        const json& keys = objectMember(*next.content, "keys", next.place);
        refuseSameNames(keys, next.place);
        for (const auto& [name, key] : keys.items())
            pending.push_back({&key, next.key.subKey(name), next.place + "/" + name});
    }
}

} // namespace

void exportRegistry(const std::string& path, Scope scope) {
    const Library library;
    auto key = openScopeKey(library, scope == Scope::machine, toUtf16(path));
    printOut("{}", treeAsJson(std::move(key)));
}

void importRegistry(const std::string& file, const std::string& path, Scope scope) {
    const json content = readJson(file);
    const Library library;
    const ScopeWriter writer(library, scope == Scope::machine);
    KeyChange key = writer.key(path);
    readingFrom(file, [&] { importKeys(content, std::move(key)); });
    writer.commit();
}

} // namespace tool
