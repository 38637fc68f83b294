// Components for tests: identifiers that are told by a number, native components in the text of a
// registry file, classes in the system registry, and all that details tell in one line.
#pragma once

#include "tests/support/registry_writers.h"
#include "tests/support/system_registry.h"

#include <tarvo/tarvo.hpp>

#include <bit>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

namespace tests {

using TARVO::platform::RegistryRoot;
using TARVO::platform::RegistryView;
using TARVO::platform::SystemKey;
using Details = tarvo::Reference<IVaskPMCRegistrationDetails>;
using Enumerator = tarvo::Reference<IVaskPMCEnumerator>;
using Collection = tarvo::Reference<ITarvoCollection>;

// {ab000000-0000-0000-0000-0000000000NN}
inline tarvo::UUID id(std::uint8_t number) {
    return TarvoUUID{{0xAB, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, number}};
}
inline std::u16string idText(std::uint8_t number) {
    return id(number).string();
}
inline std::u16string classText(const tarvo::UUID& uuid) {
    return TARVO::platform::classText(std::bit_cast<TARVO::platform::IdentifierBytes>(uuid)).data();
}
inline std::u16string classText(std::uint8_t number) {
    return classText(id(number));
}

// ---- native components, in a registry file ----

inline std::string key(std::u16string_view name, std::string_view content) {
    return "<key name=\"" + narrow(name) + "\">" + std::string(content) + "</key>";
}
inline std::string value(std::u16string_view name, std::string_view type, std::string_view text) {
    return "<value name=\"" + narrow(name) + "\" type=\"" + std::string(type) + "\">" +
           std::string(text) + "</value>";
}
inline std::string text(std::u16string_view name, std::string_view content) {
    return value(name, "string", content);
}
inline std::string emptyValue(std::u16string_view name) {
    return "<value name=\"" + narrow(name) + "\" type=\"empty\"/>";
}
inline std::string pmc(std::uint8_t number, std::string_view content) {
    return key(idText(number), content);
}
inline std::string pmcs(std::string_view content) {
    return key(u"components", key(u"pmcs", content));
}

// ---- classes, in the system registry ----

inline SystemKey classesOf(RegistryRoot root, RegistryView view) {
    return SystemKey::openForWriting(root, u"Software\\Classes", view);
}

// What tests and the library for them put there, gone with the object and whenever it is asked for.
// Tests put classes into the machine's, since Wine shows no others below the root of all classes.
class SystemClasses {
  public:
    SystemClasses() {
        // Windows has these keys for every user, while a new Wine prefix hasn't got them yet.
        const SystemKey software =
            SystemKey::openForWriting(RegistryRoot::currentUser, u"Software");
        EXPECT_TRUE(software.create(u"Classes\\CLSID"));
        EXPECT_TRUE(software.create(u"Classes\\Wow6432Node\\CLSID"));
        clear();
    }
    SystemClasses(const SystemClasses&) = delete;
    SystemClasses& operator=(const SystemClasses&) = delete;
    ~SystemClasses() { clear(); }

    void clear() {
        TARVO::platform::RegistryBatch batch;
        for (const auto root : {RegistryRoot::currentUser, RegistryRoot::localMachine})
            for (const auto view : {RegistryView::view32, RegistryView::view64})
                for (const std::u16string& path : made_)
                    classesOf(root, view).deleteTree(path.c_str(), view);
    }

    struct Value {
        const char16_t* path; // below the class's key
        const char16_t* name;
        const char16_t* text; // null for a key without the value
    };

    void add(RegistryView view, std::uint8_t number, std::initializer_list<Value> values = {}) {
        const SystemKey key = make(view, u"CLSID\\" + classText(number));
        for (const auto& [path, name, text] : values) {
            const SystemKey below = key.create(path, view);
            EXPECT_TRUE(text == nullptr ? static_cast<bool>(below) : below.setText(name, text));
        }
    }

    void addProgId(RegistryView view, const std::u16string& progId, const std::u16string& clsid) {
        EXPECT_TRUE(make(view, progId + u"\\CLSID").setText(nullptr, clsid.c_str()));
    }

    // A key of the classes, open for writing.
    SystemKey make(RegistryView view, const std::u16string& path) {
        SystemKey key = classesOf(RegistryRoot::localMachine, view).create(path.c_str(), view);
        EXPECT_TRUE(key) << narrow(path);
        const std::size_t end = path.find(u'\\', path.starts_with(u"CLSID\\") ? 6 : 0);
        made_.insert(path.substr(0, end));
        return key;
    }

  private:
    std::set<std::u16string> made_ = [] {
        std::set<std::u16string> used = {u"Test.Pmc", u"Test.Pmc.1"};
        for (std::uint8_t number = 0; number < 32; ++number)
            used.insert(u"CLSID\\" + classText(number));
        return used;
    }();
};

// No component and no class at the start of a test.
class EmptyCatalogue : public EmptyScopes {
  protected:
    SystemClasses classes;
};

// ---- what the library tells of them ----

inline Enumerator newEnumerator() {
    Enumerator enumerator;
    EXPECT_EQ(TARVO_CALL(vaskGetPMCEnumerator)(enumerator.out()), RC_OK);
    return enumerator;
}

// Null if there is no such component.
inline Details find(const Enumerator& enumerator, std::uint8_t number) {
    Details details;
    const tarvo::UUID uuid = id(number);
    const auto result = enumerator->table->getPMCByUUID(enumerator->me, &uuid, details.out());
    EXPECT_EQ(result, details ? RC_OK : RC_NOT_FOUND);
    return details;
}

inline std::string locationsOf(IVaskPMCRegistrationDetails& details) {
    tarvo::ScalarArray<std::int32_t> numbers;
    EXPECT_EQ(details.table->getLocations(details.me, numbers.pair()), RC_OK);
    std::string all;
    for (const std::int32_t number : numbers.elements()) {
        all += std::to_string(number);
        tarvo::String text;
        EXPECT_EQ(
            details.table->getLocation(details.me, static_cast<std::uint32_t>(number), text.pair()),
            RC_OK);
        EXPECT_FALSE(text.text().empty());
    }
    return all;
}

// "name=Mixer, flags=1" and so on: what is not empty, or the code of what can't be had.
inline std::string describe(IVaskPMCRegistrationDetails& details) {
    using Table = IVaskPMCRegistrationDetailsTable;
    const std::pair<const char*, TarvoResult (*Table::*)(void*, IVaskString*)> texts[] = {
        {"name", &Table::getName},
        {"description", &Table::getDescription},
        {"standard", &Table::getVaskVersion},
        {"version", &Table::getComponentVersion},
        {"vendor", &Table::getVendorURL},
        {"help", &Table::getHelpURL},
        {"about", &Table::getAbout},
        {"progId", &Table::getProgId},
        {"independent", &Table::getVersionIndependentProgId},
    };
    std::string all;
    const auto tell = [&all](const char* what, const std::string& text) {
        if (!text.empty())
            all += (all.empty() ? "" : ", ") + std::string(what) + "=" + text;
    };
    for (const auto& [what, slot] : texts) {
        tarvo::String text;
        const TarvoResult result = (details.table->*slot)(details.me, text.pair());
        tell(what, result == RC_OK ? narrow(text.text()) : std::to_string(result));
    }
    std::uint32_t flags = 99;
    if (const auto result = details.table->getFlags(details.me, &flags); result != RC_OK)
        tell("flags", std::to_string(result));
    else if (flags != 0)
        tell("flags", std::to_string(flags));
    tarvo::StringArray categories;
    EXPECT_EQ(details.table->getCategories(details.me, categories.pair()), RC_OK);
    std::multiset<std::u16string> sorted;
    for (const tarvo::String& category : categories.strings())
        sorted.insert(category.text());
    for (const std::u16string& category : sorted) {
        const auto uuid = tarvo::UUID::parse(category).value_or(id(0));
        std::uint32_t isIn = 99;
        EXPECT_EQ(details.table->isInCategory(details.me, &uuid, &isIn), RC_OK);
        EXPECT_EQ(isIn, 1u);
        tell("in", narrow(category).substr(1, 8));
    }
    tell("at", locationsOf(details));
    return all;
}

// The components of a collection in its order, each as the last digits of its identifier and its
// locations: "01[3]".
inline std::vector<std::string> itemsOf(const Collection& collection) {
    std::vector<std::string> items;
    std::uint32_t count = 0;
    EXPECT_EQ(collection->table->getCount(collection->me, &count), RC_OK);
    for (std::uint32_t i = 0; i < count; ++i) {
        Details details;
        EXPECT_EQ(collection->table->getItem(collection->me, static_cast<std::int32_t>(i),
                                             reinterpret_cast<IVaskInterface**>(details.out())),
                  RC_OK);
        tarvo::UUID uuid;
        EXPECT_EQ(details->table->getUUID(details->me, &uuid), RC_OK);
        items.push_back(narrow(uuid.string()).substr(35, 2) + "[" + locationsOf(*details) + "]");
    }
    return items;
}

using Items = std::vector<std::string>;

} // namespace tests
