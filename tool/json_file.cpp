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

// Keeps the first name that one object has twice; of what else a parser comes upon it wants
// nothing.
class Repetition : public nlohmann::json_sax<json> {
  public:
    const std::optional<std::string>& name() const { return name_; }

    bool start_object(std::size_t) override {
        open_.emplace_back();
        return true;
    }
    bool key(string_t& name) override {
        if (!name_ && !open_.back().insert(name).second)
            name_ = name;
        return true;
    }
    bool end_object() override {
        open_.pop_back();
        return true;
    }

    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_array(std::size_t) override { return true; }
    bool end_array() override { return true; }
    bool parse_error(std::size_t, const std::string&, const json::exception&) override {
        return false;
    }

  private:
    std::vector<std::set<std::string>> open_; // the names of each object that has begun
    std::optional<std::string> name_;
};

} // namespace

json readJson(const std::string& path) {
    const std::string bytes = readFile(path);
    try {
        json parsed = json::parse(bytes);
        Repetition repetition;
        json::sax_parse(bytes, &repetition);
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
