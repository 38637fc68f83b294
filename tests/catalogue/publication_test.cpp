// What a commit publishes of native components in the system registry, read back from there.
#include "tests/catalogue/registration.h"

#include <cstring>
#include <functional>

namespace {

using namespace tests;

constexpr auto k32 = RegistryView::view32;
constexpr auto k64 = RegistryView::view64;

void addClassLines(const SystemKey& key, const std::u16string& path, Lines& lines) {
    const std::string shown = shortened(narrow(path));
    lines.insert(shown);
    for (const char16_t* name : {u"", u"ThreadingModel", u"Name", u"Description", u"About",
                                 u"VaskVersion", u"ComponentVersion", u"VendorURL", u"HelpURL"}) {
        const auto value = support::storedValue(key, name);
        if (!value)
            continue;
        std::u16string text(value->bytes.size() / 2, u'\0');
        std::memcpy(text.data(), value->bytes.data(), text.size() * 2);
        EXPECT_EQ(value->type, TARVO::platform::kTextValue);
        EXPECT_EQ(text.find(u'\0') + 1, text.size()) << shown << narrow(name);
        lines.insert(shown + ":" + narrow(name) + "=" + shortened(narrow(text.c_str())));
    }
    for (const std::u16string& name : support::subkeysOf(key))
        addClassLines(key.open(name.c_str()), path + u"\\" + name, lines);
}

// What is published of component 1 in a view.
Lines published(RegistryRoot root, RegistryView view) {
    Lines lines;
    const SystemKey classes = SystemKey::open(root, u"Software\\Classes", view);
    for (const std::u16string& path :
         {u"CLSID\\" + classText(1), std::u16string(u"Test.Pmc"), std::u16string(u"Test.Pmc.1")})
        if (const SystemKey key = classes.open(path.c_str(), view))
            addClassLines(key, path, lines);
    return lines;
}

std::string factory() {
    tarvo::String folder;
    EXPECT_EQ(TARVO_CALL(getTarvoFolder)(folder.pair()), RC_OK);
    return narrow(folder.text()) + "MORVENClassFactory.dll";
}

const std::string kClass = "CLSID\\{AB-01}";

// The lines of a component with nothing but a name, and those of further keys and values.
Lines classWith(std::initializer_list<std::string> further) {
    Lines lines = {kClass,
                   kClass + ":=N",
                   kClass + "\\InprocServer32",
                   kClass + "\\InprocServer32:=" + factory(),
                   kClass + "\\VaskDescription",
                   kClass + "\\VaskDescription:Name=N",
                   kClass + "\\Implemented Categories"};
    lines.insert(further.begin(), further.end());
    return lines;
}

std::string threading(const char* model) {
    return kClass + "\\InprocServer32:ThreadingModel=" + model;
}
std::string description(const char* value) {
    return kClass + "\\VaskDescription:" + value;
}
std::string category(const char* name) {
    return kClass + "\\Implemented Categories\\" + name;
}

constexpr auto kTarvoComponent =
    tarvo::UUID::parse(u"{37e03033-63b9-4f55-b5c4-807bede03deb}").value();
constexpr auto kDependentA = tarvo::UUID::parse(u"{678c09a5-7d66-11d2-a67d-00105a42887f}").value();
constexpr auto kDependentB = tarvo::UUID::parse(u"{7ba1af89-b2e4-493d-bd80-2970bf4cbe99}").value();

using Publication = EmptyCatalogue;

TEST_F(Publication, HoldsWhatTheComponentIsRegisteredWith) {
    const std::pair<Component, Lines> cases[] = {
        {{.vaskVersion = u"x",
          .description = u"D",
          .componentVersion = u"4.5",
          .vendorURL = u"v",
          .helpURL = u"h",
          .about = u"a",
          .progId = u"Test.Pmc.1",
          .versionIndependentProgId = u"Test.Pmc",
          .categories = {id(0x20)},
          .flags = 1},
         classWith({threading("Apartment"),
                    description("Description=D"),
                    description("About=a"),
                    description("VaskVersion=x"),
                    description("ComponentVersion=4.5"),
                    description("VendorURL=v"),
                    description("HelpURL=h"),
                    kClass + "\\ProgID",
                    kClass + "\\ProgID:=Test.Pmc.1",
                    kClass + "\\VersionIndependentProgID",
                    kClass + "\\VersionIndependentProgID:=Test.Pmc",
                    category("{AB-20}"),
                    "Test.Pmc",
                    "Test.Pmc:=N",
                    "Test.Pmc\\CLSID",
                    "Test.Pmc\\CLSID:={AB-01}",
                    "Test.Pmc.1",
                    "Test.Pmc.1:=N",
                    "Test.Pmc.1\\CLSID",
                    "Test.Pmc.1\\CLSID:={AB-01}"})},
        {{.progId = u"Test.Pmc", .flags = 2},
         classWith({threading("Both"), description("VaskVersion=1.3"), kClass + "\\ProgID",
                    kClass + "\\ProgID:=Test.Pmc", kClass + "\\VersionIndependentProgID",
                    kClass + "\\VersionIndependentProgID:=Test.Pmc", "Test.Pmc", "Test.Pmc:=N",
                    "Test.Pmc\\CLSID", "Test.Pmc\\CLSID:={AB-01}"})},
        {{.versionIndependentProgId = u"Test.Pmc"},
         classWith({threading("Both"), description("VaskVersion=1.3"),
                    kClass + "\\VersionIndependentProgID",
                    kClass + "\\VersionIndependentProgID:=Test.Pmc", "Test.Pmc", "Test.Pmc:=N",
                    "Test.Pmc\\CLSID", "Test.Pmc\\CLSID:={AB-01}"})},
        {{.categories = {kTarvoComponent}},
         classWith({threading("Both"), description("VaskVersion=1.3"), category("{67-7F}")})},
        {{.categories = {kTarvoComponent, kDependentA}},
         classWith({threading("Both"), description("VaskVersion=1.3"), category("{67-7F}"),
                    category("{67-7F}"), category("{41-49}"), category("{46-ED}")})},
        {{.categories = {kDependentB, kTarvoComponent, id(0x20)}},
         classWith({threading("Both"), description("VaskVersion=1.3"), category("{67-7F}"),
                    category("{7B-99}"), category("{41-49}"), category("{46-ED}"),
                    category("{AB-20}")})},
        {{.categories = {kDependentA, kDependentB}},
         classWith({threading("Both"), description("VaskVersion=1.3"), category("{67-7F}"),
                    category("{7B-99}")})},
    };
    for (const auto& [component, expected] : cases)
        for (const auto scope : {Scope::user, Scope::machine})
            for (const std::set<int>& locations : {std::set{0}, std::set{1}, std::set{0, 1, 4}}) {
                classes.clear();
                Component located = component;
                for (const int location : locations)
                    located.locations[location] = u"x";
                registerComponent(located, scope);
                const auto [in, notIn] =
                    scope == Scope::user
                        ? std::pair(RegistryRoot::currentUser, RegistryRoot::localMachine)
                        : std::pair(RegistryRoot::localMachine, RegistryRoot::currentUser);
                const auto inView = [&](RegistryView view, int location) {
                    Lines lines = published(in, view);
                    if (!locations.contains(location))
                        std::erase_if(lines, [](const std::string& line) {
                            return line.starts_with("Test"); // Windows has one for both views
                        });
                    return lines;
                };
                EXPECT_EQ(inView(k32, 0), locations.contains(0) ? expected : Lines{});
                EXPECT_EQ(inView(k64, 1), locations.contains(1) ? expected : Lines{});
                EXPECT_EQ(published(notIn, k32), Lines{});
                EXPECT_EQ(published(notIn, k64), Lines{});
            }
}

TEST_F(Publication, TellsTheVersionThatCOMClassesFollow) {
    const auto oneOne = [](std::uint8_t number) {
        auto uuid = tarvo::UUID::parse(u"{cf51e380-0110-4ed8-acb7-b50cfde6908e}").value();
        uuid.bytes[3] = number;
        return uuid;
    };
    const std::tuple<const char16_t*, std::vector<tarvo::UUID>, const char*> cases[] = {
        {u"1.2", {}, "1.0"},
        {u"1.2", {oneOne(0x82), oneOne(0x87), id(20)}, "1.0"},
        {u"1.2", {oneOne(0x83)}, "1.1"},
        {u"1.2", {id(20), oneOne(0x84)}, "1.1"},
        {u"1.2", {oneOne(0x85)}, "1.1"},
        {u"1.2", {oneOne(0x86)}, "1.1"},
        {u"1.20", {oneOne(0x86)}, "1.20"},
        {u"1.1", {}, "1.1"},
    };
    for (const auto& [version, categories, expected] : cases) {
        registerComponent(
            {.vaskVersion = version, .categories = categories, .locations = {{1, u"x"}}});
        EXPECT_TRUE(published(RegistryRoot::currentUser, k64)
                        .contains(description("VaskVersion=") + expected))
            << expected;
    }
}

TEST_F(Publication, IsTakenBackByLocationWhoeverMadeIt) {
    const tarvo::UUID uuid = id(1);
    const Component component = {.progId = u"Test.Pmc.1",
                                 .versionIndependentProgId = u"Test.Pmc",
                                 .locations = {{0, u"32"}, {1, u"64"}, {4, u"r"}}};
    const struct {
        std::function<void(const Writer&)> act;
        bool in32;
        bool in64;
    } cases[] = {
        {[&](const Writer& w) { w->table->unregisterPMCLocation(w->me, &uuid, 0); }, false, true},
        {[&](const Writer& w) { w->table->unregisterPMCLocation(w->me, &uuid, 1); }, true, false},
        {[&](const Writer& w) { w->table->unregisterPMCLocation(w->me, &uuid, 4); }, true, true},
        {[&](const Writer& w) { w->table->unregisterPMC(w->me, &uuid); }, false, false},
    };
    for (const auto& [act, in32, in64] : cases) {
        registerComponent(component, Scope::machine);
        registerComponent(component);
        const auto writer = newWriter();
        act(writer);
        commit(writer);
        for (const auto root : {RegistryRoot::currentUser, RegistryRoot::localMachine}) {
            // A ProgID goes with its class. Windows has one for both views, and Wine two.
            for (const auto& [view, isThere] : {std::pair(k32, in32), std::pair(k64, in64)}) {
                EXPECT_EQ(published(root, view).contains(kClass), isThere);
                for (const char* progId : {"Test.Pmc", "Test.Pmc.1"})
                    if (in32 == in64 || !isThere) {
                        EXPECT_EQ(published(root, view).contains(progId), isThere);
                    }
            }
        }
    }
    const auto writer = newWriter();
    writer->table->unregisterPMC(writer->me, &uuid);
    add(writer, {.locations = {{1, u"64"}}});
    commit(writer);
    EXPECT_EQ(published(RegistryRoot::currentUser, k32), Lines{});
    EXPECT_EQ(published(RegistryRoot::currentUser, k64),
              classWith({threading("Both"), description("VaskVersion=1.3")}));
}

TEST_F(Publication, IsTakenBackWithoutTheClassesOfOthers) {
    const tarvo::UUID other = id(2);
    registerComponent({.locations = {{1, u"64"}}});
    registerComponent({.number = 2, .progId = u"Clsid", .locations = {{1, u"64"}}});
    const auto writer = newWriter();
    writer->table->unregisterPMC(writer->me, &other);
    commit(writer);
    EXPECT_TRUE(published(RegistryRoot::currentUser, k64).contains(kClass));
}

TEST_F(Publication, IsReadBackAsTheClassOfAComponent) {
    registerComponent({.vaskVersion = u"1.2",
                       .description = u"D",
                       .progId = u"Test.Pmc",
                       .categories = {id(20), kTarvoComponent, kDependentA},
                       .locations = {{0, u"32"}, {1, u"64"}},
                       .flags = 1},
                      Scope::machine);
    removeScope(Scope::machine);
    EXPECT_EQ(describe(*find(newEnumerator(), 1)),
              "name=N, description=D, standard=1.2, progId=Test.Pmc, independent=Test.Pmc, "
              "flags=1, in=37e03033, in=678c09a5, in=ab000000, at=23");
}

TEST_F(Publication, StaysWhenTheCommitFailsBehindIt) {
    const auto writer = newWriter();
    add(writer, {.locations = {{1, u"64"}, {7, u"x"}}});
    EXPECT_EQ(commitOf(writer), RC_INVALID_ARGUMENT);
    EXPECT_TRUE(published(RegistryRoot::currentUser, k64).contains(kClass));
    EXPECT_FALSE(published(RegistryRoot::currentUser, k32).contains(kClass));
}

TEST_F(Publication, IsNotRepeatedByAFurtherCommit) {
    const auto writer = newWriter();
    add(writer, {.locations = {{1, u"64"}}});
    commit(writer);
    classes.clear();
    commit(writer);
    EXPECT_EQ(published(RegistryRoot::currentUser, k64), Lines{});
    EXPECT_TRUE(find(newEnumerator(), 1));
}

} // namespace
