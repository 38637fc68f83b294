#include "tool/json_file.h"

#include "platform/file.h"
#include "registry/registry_file.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"

#include <fmt/format.h>
#include <optional>
#include <set>
#include <vector>

namespace tool {

std::string readFile(const std::string& path) {
    Progress::say("Reading " + path);
    TARVO::platform::OpenedFile opened = TARVO::platform::File::openForReading(toUtf16(path));
    TARVO::FileBytes bytes(opened.file);
    if (opened.error != TARVO::platform::FileError::none || !bytes.readAll())
        throw Failure("cannot read " + path);
    return std::string(bytes.view());
}

namespace {

using nlohmann::json;

// Hears what a parser comes upon, and keeps the first name that one object has twice.
class Repetition {
  public:
    bool operator()(json::parse_event_t event, const json& parsed) {
        if (event == json::parse_event_t::object_start)
            open_.emplace_back();
        else if (event == json::parse_event_t::object_end)
            open_.pop_back();
        else if (event == json::parse_event_t::key && !name_ &&
                 !open_.back().insert(parsed.get<std::string>()).second)
            name_ = parsed.get<std::string>();
        return true;
    }

    const std::optional<std::string>& name() const { return name_; }

  private:
    std::vector<std::set<std::string>> open_; // the names of each object that has begun
    std::optional<std::string> name_;
};

} // namespace

json readJson(const std::string& path) {
    const std::string bytes = readFile(path);
    try {
        Repetition repetition;
        json parsed = json::parse(bytes, [&](int, json::parse_event_t event, const json& value) {
            return repetition(event, value);
        });
        if (repetition.name())
            throw Failure(
                fmt::format("{}: an object has two members \"{}\"", path, *repetition.name()));
        return parsed;
    } catch (const nlohmann::json::parse_error& error) {
        const TextPlace place = placeOf(bytes, error.byte > 0 ? error.byte - 1 : 0);
        throw Failure(
            fmt::format("{}:{}:{}: no JSON from here on", path, place.line, place.column));
    }
}

} // namespace tool
