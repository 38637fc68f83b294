#include "tool/json_file.h"

#include "platform/file.h"
#include "registry/registry_file.h"
#include "tool/output.h"
#include "tool/text.h"

#include <cstddef>
#include <cstdint>
#include <fmt/format.h>
#include <istream>
#include <set>
#include <sstream>
#include <vector>

namespace tool {

namespace {

using nlohmann::json;

// Reads for nothing but mistakes, and stops at the first: no JSON, or a member that its object has
// already.
class JsonExaminer : public nlohmann::json_sax<json> {
  public:
    explicit JsonExaminer(std::istream& text) : text_(text) {}

    bool start_object(std::size_t) override {
        names_.emplace_back();
        return true;
    }
    bool key(std::string& name) override {
        if (names_.back().insert(name).second)
            return true;
        end_ = static_cast<std::size_t>(text_.tellg());
        reason_ = fmt::format("a member \"{}\" stands in this object already", printable(name));
        return false;
    }
    bool end_object() override {
        names_.pop_back();
        return true;
    }
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(std::int64_t) override { return true; }
    bool number_unsigned(std::uint64_t) override { return true; }
    bool number_float(double, const std::string&) override { return true; }
    bool string(std::string&) override { return true; }
    bool binary(json::binary_t&) override { return true; }
    bool start_array(std::size_t) override { return true; }
    bool end_array() override { return true; }
    bool parse_error(std::size_t position, const std::string&, const json::exception&) override {
        end_ = position;
        reason_ = "no JSON from here on";
        return false;
    }

    // The offset of the mistake's last byte.
    std::size_t offset() const { return end_ > 0 ? end_ - 1 : 0; }
    const std::string& reason() const { return reason_; }

  private:
    std::istream& text_;                       // tells how far the parser has come
    std::vector<std::set<std::string>> names_; // of the objects around that place
    std::size_t end_ = 0;
    std::string reason_;
};

} // namespace

std::string readFile(const std::string& path) {
    Progress::say("Reading " + path);
    TARVO::platform::OpenedFile opened = TARVO::platform::File::openForReading(toUtf16(path));
    TARVO::FileBytes bytes(opened.file);
    if (opened.error != TARVO::platform::FileError::none || !bytes.readAll())
        throw Failure("cannot read " + path);
    return std::string(bytes.view());
}

json readJson(const std::string& path) {
    const std::string bytes = readFile(path);
    std::istringstream text(bytes);
    JsonExaminer examiner(text);
    if (json::sax_parse(text, &examiner))
        return json::parse(bytes);
    const TextPlace place = placeOf(bytes, examiner.offset());
    throw Failure(fmt::format("{}:{}:{}: {}", path, place.line, place.column, examiner.reason()));
}

} // namespace tool
