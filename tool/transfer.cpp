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
#include <deque>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

namespace {

using nlohmann::json;

// A key of the file that is still to be imported.
struct PendingKey {
    const json* content;
    KeyChange key;
    const Place* place;
};

// Both would be taken for something else: what is behind a null character is cut off, and a
// separator makes two names. All other names that can't be are refused by the library.
void checkName(const std::string& name, const Place& place) {
    constexpr std::string_view kMistakable("\0/\\", 3);
    if (name.find_first_of(kMistakable) != std::string::npos)
        failAt(place, "the name holds a null character or a separator");
}

// The members of an object whose names are those of keys or values, without regard to case.
const json& namedMembers(const json& object, const char* name, const Place& place) {
    const json& members = objectMember(object, name, place);
    std::set<std::string> names;
    for (const auto& member : members.items()) {
        checkName(member.key(), Place(place, member.key()));
        if (!names.insert(lowered(member.key())).second)
            failAt(Place(place, member.key()),
                   fmt::format("\"{}\" has this name twice, in letters of another case", name));
    }
    return members;
}

void importValue(const KeyChange& key, const std::string& name, const json& value,
                 const Place& place) {
    if (!value.is_object())
        failAt(place, "is no object");
    const std::string type = textMember(value, "type", place);
    if (type == "string") {
        const std::string text = textMember(value, "value", place);
        if (!isKept(text))
            failAt(place, "\"value\" holds a control character that the registry can't keep");
        key.setString(name, text);
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

// Keys can stand as deep as the file says, so those that are still to come stand in a list.
void importKeys(const json& root, KeyChange target) {
    std::vector<PendingKey> pending;
    std::deque<Place> places(1);
    pending.push_back({&root, std::move(target), &places.front()});
    while (!pending.empty()) {
        const PendingKey next = std::move(pending.back());
        const Place& place = *next.place;
        pending.pop_back();
        if (!next.content->is_object())
            failAt(place, "is no object");
        for (const auto& [name, value] : namedMembers(*next.content, "values", place).items())
            importValue(next.key, name, value, Place(place, name));
        for (const auto& [name, key] : namedMembers(*next.content, "keys", place).items())
            pending.push_back({&key, next.key.subKey(name), &places.emplace_back(place, name)});
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
    const KeyChange target = writer.key(path);
    tellFile(file, [&] { importKeys(content, target); });
    writer.commit();
}

} // namespace tool
