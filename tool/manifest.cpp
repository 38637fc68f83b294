#include "tool/manifest.h"

#include "core/link_error.h"
#include "instantiation/remote_location.h"
#include "platform/file.h"
#include "platform/folder.h"
#include "tarvo/catalogue.h"
#include "tool/component.h"
#include "tool/failure.h"
#include "tool/json_file.h"
#include "tool/scope_writer.h"
#include "tool/text.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <string_view>

namespace tool {

namespace {

using nlohmann::json;

enum class TextRule { any, required, progId };

struct TextMember {
    const char* name;
    TextRule rule;
};

constexpr TextMember kTextMembers[] = {
    {"name", TextRule::required},
    {"description", TextRule::any},
    {"vaskVersion", TextRule::required},
    {"componentVersion", TextRule::any},
    {"vendorURL", TextRule::any},
    {"helpURL", TextRule::any},
    {"about", TextRule::any},
    {"progId", TextRule::progId},
    {"versionIndependentProgId", TextRule::progId},
};

// Members that aren't texts; an editor finds the schema by the last one.
constexpr std::string_view kOtherMembers[] = {"uuid", "flags", "categories", "locations",
                                              "$schema"};

bool isMember(std::string_view name) {
    return std::ranges::find(kOtherMembers, name) != std::end(kOtherMembers) ||
           std::ranges::any_of(kTextMembers,
                               [&](const TextMember& member) { return member.name == name; });
}

bool holdsControlCharacter(std::string_view text) {
    return std::ranges::any_of(text,
                               [](char byte) { return static_cast<unsigned char>(byte) < 0x20; });
}

bool isRemoteLocation(const std::string& text) try {
    return TARVO::parseRemoteLocation(toUtf16(text)).port <= 65535;
} catch (const TARVO::vask_link_error&) {
    return false;
}

// Reads member by member and goes on behind a mistake, so that all of them are found at once.
class ManifestReader {
  public:
    ManifestReader(const json& file, std::filesystem::path folder)
        : file_(file), folder_(std::move(folder)) {}

    Manifest read() {
        if (!file_.is_object()) {
            complain("", "must be an object");
            return manifest_;
        }
        for (const auto& [name, value] : file_.items())
            if (!isMember(name))
                complain("/" + name, "no such member; is it spelled right?");
        if (const json* schema = member("$schema"); schema != nullptr && !schema->is_string())
            complain("/$schema", "must be a text");
        readUuid();
        readFlags();
        for (const TextMember& member : kTextMembers)
            readText(member);
        readCategories();
        readLocations();
        return manifest_;
    }

    const std::vector<std::string>& mistakes() const { return mistakes_; }

  private:
    void complain(const std::string& place, const std::string& reason) {
        mistakes_.push_back((place.empty() ? "/" : printable(place)) + ": " + reason);
    }

    // Null if there is no such member.
    const json* member(const char* name) const {
        const auto found = file_.find(name);
        return found == file_.end() ? nullptr : &*found;
    }

    std::optional<tarvo::UUID> identifier(const json& value, const std::string& place) {
        auto uuid = value.is_string() ? tarvo::UUID::parse(toUtf16(value.get<std::string>()))
                                      : std::nullopt;
        if (uuid && uuid->isNil())
            uuid = std::nullopt;
        if (!uuid)
            complain(place,
                     "must be an identifier like \"{01234567-89ab-cdef-0123-456789abcdef}\"");
        return uuid;
    }

    void readUuid() {
        const json* value = member("uuid");
        if (value == nullptr)
            complain("/uuid", "is missing; every component has an identifier");
        else if (const auto uuid = identifier(*value, "/uuid"))
            manifest_.uuid = *uuid;
    }

    void readFlags() {
        const json* value = member("flags");
        if (value == nullptr)
            return;
        if (!value->is_number_integer() || (*value != 0 && *value != 1))
            return complain("/flags", "must be 0, or 1 for a component that is bound to one "
                                      "single-threaded apartment");
        manifest_.flags = value->get<std::uint32_t>();
    }

    void readText(const TextMember& member) {
        const std::string place = std::string("/") + member.name;
        const json* value = this->member(member.name);
        if (value == nullptr) {
            if (member.rule == TextRule::required)
                complain(place, "is missing");
            return;
        }
        if (!value->is_string())
            return complain(place, "must be a text");
        const auto text = value->get<std::string>();
        if (member.rule == TextRule::required && text.empty())
            return complain(place, "must not be empty");
        if (member.rule == TextRule::progId && !isProgId(text))
            return complain(place, "must be a text without slashes and control characters");
        if (holdsControlCharacter(text) && member.rule != TextRule::any)
            return complain(place, "must not hold control characters");
        if (!isKept(text))
            return complain(place, "holds a control character that the registry can't keep");
        manifest_.texts.emplace(member.name, text);
    }

    static bool isProgId(std::string_view text) {
        return !text.empty() && text.find_first_of("/\\") == std::string_view::npos &&
               !holdsControlCharacter(text);
    }

    void readCategories() {
        const json* categories = member("categories");
        if (categories == nullptr)
            return;
        if (!categories->is_array())
            return complain("/categories", "must be a list of identifiers");
        for (std::size_t i = 0; i < categories->size(); ++i)
            if (const auto category =
                    identifier((*categories)[i], "/categories/" + std::to_string(i)))
                manifest_.categories.push_back(*category);
    }

    void readLocations() {
        const json* locations = member("locations");
        if (locations == nullptr)
            return complain("/locations", "is missing; a component must be somewhere");
        if (!locations->is_object() || locations->empty())
            return complain("/locations", "must be an object with at least one location");
        for (const auto& [name, value] : locations->items())
            readLocation(name, value);
    }

    void readLocation(const std::string& name, const json& value) {
        const std::string place = "/locations/" + name;
        const auto known = std::ranges::find(kLocationNames, name);
        if (known == kLocationNames.end() || name.starts_with("COM"))
            return complain(place,
                            "no such location; there are Inproc32, Inproc64, Remote and Local");
        if (!value.is_string() || value.get<std::string>().empty())
            return complain(place, "must be a text that is not empty");
        std::string text = value.get<std::string>();
        if (holdsControlCharacter(text))
            return complain(place, "must not hold control characters");
        if (name.starts_with("Inproc")) {
            text = wholePath(text);
            const std::u16string file = toUtf16(text);
            if (!TARVO::platform::fileExists(file) || TARVO::platform::folderExists(file))
                return complain(place, "there is no file " + text);
        }
        if (name == "Remote" && !isRemoteLocation(text))
            return complain(place, "must be tarvo://HOST:PORT, with a port up to 65535");
        manifest_.locations.emplace(static_cast<std::int32_t>(known - kLocationNames.begin()),
                                    text);
    }

    std::string wholePath(const std::string& path) const {
        auto whole = (folder_ / std::filesystem::path(toUtf16(path))).lexically_normal();
        return toUtf8(whole.make_preferred().u16string());
    }

    const json& file_;
    std::filesystem::path folder_;
    Manifest manifest_;
    std::vector<std::string> mistakes_;
};

} // namespace

Manifest readManifest(const std::string& path) {
    const json file = readJson(path);
    ManifestReader reader(
        file, std::filesystem::absolute(std::filesystem::path(toUtf16(path))).parent_path());
    Manifest manifest = reader.read();
    if (reader.mistakes().empty())
        return manifest;
    throw Failure(
        fmt::format("{} can't be registered\n  {}", path, fmt::join(reader.mistakes(), "\n  ")));
}

} // namespace tool
