#include "tool/setup_leftovers.h"

#include "tool/component.h"
#include "tool/missing_file.h"
#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>
#include <tuple>
#include <utility>

namespace tool {

namespace {

using TARVO::NamedValue;
using TARVO::TarvoRegistry;

constexpr const char16_t* kProgIds = u"components/progids";
constexpr const char16_t* kFilings = u"components/categories";

std::u16string below(const std::u16string& path, std::u16string_view name) {
    return path + u'/' + std::u16string(name);
}

std::u16string textOf(const TarvoRegistry& key, std::u16string_view name) {
    const NamedValue* value = key.values.find(name);
    return value == nullptr ? std::u16string() : std::u16string(value->text());
}

class ScopeLeftovers {
  public:
    ScopeLeftovers(const ScopeTrees& trees, bool allUsers) : trees_(trees), allUsers_(allUsers) {}

    std::vector<Leftover> find() {
        forEachKey(kComponents, [this](const TarvoRegistry& key) { examineComponent(key); });
        if (const TarvoRegistry* progIds = trees_.find(allUsers_, kProgIds))
            progIds->values.forEach([this](const NamedValue& value) { examineProgId(value); });
        forEachKey(kFilings, [this](const TarvoRegistry& key) { examineFilings(key); });
        std::ranges::sort(found_, {}, [](const Leftover& leftover) {
            return std::tie(leftover.finding.kind, leftover.finding.text);
        });
        return std::move(found_);
    }

  private:
    template <class Use>
    void forEachKey(const char16_t* path, Use use) const {
        if (const TarvoRegistry* keys = trees_.find(allUsers_, path))
            keys->subKeys.forEach(use);
    }

    void examineComponent(const TarvoRegistry& key) {
        const auto uuid = tarvo::UUID::parse(key.name());
        if (!uuid)
            return; // no component's key
        for (const std::int32_t location : {TARVO_LOCATION_INPROC32, TARVO_LOCATION_INPROC64})
            examineLocation(key, *uuid, location);
        const TarvoRegistry* categories = key.subKeys.find(u"categories");
        if (categories == nullptr)
            return;
        categories->values.forEach([&](const NamedValue& value) {
            const std::u16string filing = below(kFilings, value.name());
            if (tarvo::UUID::parse(value.name()) && !trees_.hasValue(filing, key.name()))
                addMissingFiling(key, toUtf8(value.name()));
        });
    }

    // A name without a folder is looked for by the system in places of its own.
    void examineLocation(const TarvoRegistry& key, const tarvo::UUID& uuid, std::int32_t location) {
        const std::string name(kLocationNames[static_cast<std::size_t>(location)]);
        std::u16string valueName = toUtf16(name);
        valueName.front() = u'i'; // names are kept in lower case
        const std::u16string path = textOf(key, valueName);
        if (path.find_first_of(u"/\\") == std::u16string::npos || TARVO::platform::fileExists(path))
            return;
        const std::string id = toUtf8(key.name());
        Leftover leftover{
            {"component-file-missing", id,
             fmt::format("{} has no file {}, its {} location in the {} scope.", nameOf(key),
                         toUtf8(path), name, scope()),
             fmt::format("Put the file back, or run `tarvo pmc unregister {} --location {} --scope "
                         "{}`.",
                         id, name, scope()),
             ""},
            fmt::format("The {} location is removed.", name),
            {}};
        if (isGoneForGood(path) && !isInOtherScope(key))
            leftover.change = [uuid, location](const ScopeWriter& writer) {
                writer.removeLocation(uuid, location);
            };
        found_.push_back(std::move(leftover));
    }

    void addMissingFiling(const TarvoRegistry& key, const std::string& category) {
        const std::string id = toUtf8(key.name());
        found_.push_back(
            {{"category-filing-missing", id,
              fmt::format("{} is of the category {}, which doesn't know it ({} scope).",
                          nameOf(key), category, scope()),
              "Register the component again, or run `tarvo setup check --fix`.", ""},
             "The category knows it now.",
             [id, category](const ScopeWriter& writer) {
                 writer.key("/components/categories/" + category).setEmpty(id);
             }});
    }

    void examineFilings(const TarvoRegistry& category) {
        category.values.forEach([&](const NamedValue& value) {
            const std::u16string component = below(kComponents, value.name());
            if (trees_.hasValue(component + u"/categories", category.name()))
                return;
            const std::string id = toUtf8(value.name());
            const std::string path = "/components/categories/" + toUtf8(category.name());
            found_.push_back(
                {{"category-filing-leftover", id,
                  fmt::format(
                      "The category {} lists {}, which {} ({} scope).", toUtf8(category.name()), id,
                      trees_.hasKey(component) ? "isn't of it" : "isn't registered", scope()),
                  adviceToDelete(path, id), ""},
                 "It is no longer listed.",
                 [id, path](const ScopeWriter& writer) {
                     writer.deleteValue(path, id);
                 }});
        });
    }

    void examineProgId(const NamedValue& value) {
        if (trees_.hasKey(below(kComponents, value.text())))
            return;
        const std::string progId = toUtf8(value.name());
        found_.push_back(
            {{"progid-leftover", progId,
              fmt::format("The ProgID {} leads to {}, which isn't registered ({} scope).", progId,
                          toUtf8(value.text()), scope()),
              adviceToDelete("/components/progids", progId), ""},
             "The ProgID is removed.",
             [progId](const ScopeWriter& writer) {
                 writer.deleteValue("/components/progids", progId);
             }});
    }

    // A command is advised only where a shell takes the names as they are: anybody may have
    // registered them.
    std::string adviceToDelete(const std::string& path, const std::string& name) const {
        const std::string plain = "abcdefghijklmnopqrstuvwxyz0123456789._-{}/";
        if ((path + name).find_first_not_of(plain) != std::string::npos || name.starts_with('-'))
            return "Run `tarvo setup check --fix`.";
        return fmt::format("Run `tarvo registry delete {} {} --scope {}`.", path, name, scope());
    }

    // The class that is published stands for the component of both scopes, and would go too.
    bool isInOtherScope(const TarvoRegistry& key) const {
        return trees_.find(!allUsers_, below(kComponents, key.name())) != nullptr;
    }

    std::string scope() const { return scopeName(allUsers_); }

    // With its name, whichever scope has that.
    std::string nameOf(const TarvoRegistry& key) const {
        std::string id = toUtf8(key.name());
        for (const bool allUsers : kUserThenMachine) {
            const TarvoRegistry* same = trees_.find(allUsers, below(kComponents, key.name()));
            if (same != nullptr && same->values.find(u"name") != nullptr)
                return toUtf8(textOf(*same, u"name")) + " " + id;
        }
        return id;
    }

    const ScopeTrees& trees_;
    bool allUsers_;
    std::vector<Leftover> found_;
};

} // namespace

std::vector<Leftover> findLeftovers(const ScopeTrees& trees, bool allUsers) {
    return ScopeLeftovers(trees, allUsers).find();
}

} // namespace tool
