#include "tool/json_member.h"

namespace tool {

using nlohmann::json;

void failAt(const std::string& place, const std::string& reason) {
    throw Failure(place.empty() ? reason : place + ": " + reason);
}

const json& member(const json& object, const char* name, const std::string& place) {
    const auto found = object.find(name);
    if (found == object.end())
        failAt(place, fmt::format("has no \"{}\"", name));
    return *found;
}

const json& objectMember(const json& object, const char* name, const std::string& place) {
    const json& content = member(object, name, place);
    if (!content.is_object())
        failAt(place, fmt::format("\"{}\" is no object", name));
    return content;
}

std::string textMember(const json& object, const char* name, const std::string& place) {
    const json& value = member(object, name, place);
    if (!value.is_string())
        failAt(place, fmt::format("\"{}\" is no text", name));
    return value.get<std::string>();
}

} // namespace tool
