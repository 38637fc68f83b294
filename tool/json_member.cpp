#include "tool/json_member.h"

#include "tool/failure.h"
#include "tool/text.h"

#include <vector>

namespace tool {

using nlohmann::json;

std::string Place::path() const {
    std::vector<const std::string*> names;
    for (const Place* place = this; place->around_ != nullptr; place = place->around_)
        names.push_back(&place->name_);
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        path.append("/").append(printable(**name));
    return path;
}

void failAt(const Place& place, const std::string& reason) {
    const std::string path = place.path();
    throw Failure(path.empty() ? reason : path + ": " + reason);
}

const json& member(const json& object, const char* name, const Place& place) {
    const auto found = object.find(name);
    if (found == object.end())
        failAt(place, fmt::format("has no \"{}\"", name));
    return *found;
}

const json& objectMember(const json& object, const char* name, const Place& place) {
    const json& content = member(object, name, place);
    if (!content.is_object())
        failAt(place, fmt::format("\"{}\" is no object", name));
    return content;
}

std::string textMember(const json& object, const char* name, const Place& place) {
    const json& value = member(object, name, place);
    if (!value.is_string())
        failAt(place, fmt::format("\"{}\" is no text", name));
    return value.get<std::string>();
}

} // namespace tool
