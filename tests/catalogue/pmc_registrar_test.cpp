// What a registrar takes, and what a writer's commit makes of it in the private registry.
#include "tests/catalogue/registration.h"

#include <functional>

namespace {

using namespace tests;

using PMCRegistrar = EmptyCatalogue;

Lines lines(std::initializer_list<std::string> all) {
    return all;
}

const char kPMC[] = "components/pmcs/{ab-01}";

TEST_F(PMCRegistrar, ChecksWhatItIsGiven) {
    const auto writer = newWriter();
    const auto registrar = newRegistrar(writer);
    const auto& table = *registrar->table;
    void* const me = registrar->me;
    const TarvoUUID nil{};
    const tarvo::UUID uuid = id(1);
    EXPECT_EQ(writer->table->createPMCRegistrar(writer->me, nullptr), RC_NULL_POINTER);
    for (const auto set : {table.setProgId, table.setVersionIndependentProgId}) {
        EXPECT_EQ(set(me, nullptr), RC_NULL_POINTER);
        for (const char16_t* refused : {u"", u"a/b", u"a\\b", u"a\u001Fb"})
            EXPECT_EQ(set(me, refused), RC_INVALID_ARGUMENT);
        const char16_t unpaired[] = {u'a', 0xD800, 0};
        EXPECT_EQ(set(me, unpaired), RC_INVALID_ARGUMENT);
        EXPECT_EQ(set(me, u"Test Pmc."), RC_OK);
    }
    EXPECT_EQ(table.setUUID(me, &nil), RC_INVALID_ARGUMENT);
    EXPECT_EQ(table.setUUID(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.addCategory(me, nullptr), RC_NULL_POINTER);
    const struct {
        std::int32_t location;
        const char16_t* text;
        TarvoResult result;
    } locations[] = {
        {2, nullptr, RC_INVALID_ARGUMENT}, {3, nullptr, RC_INVALID_ARGUMENT},
        {0, nullptr, RC_NULL_POINTER},     {0, u"", RC_INVALID_ARGUMENT},
        {9, u"", RC_INVALID_ARGUMENT},
    };
    for (const auto& [location, text, result] : locations)
        EXPECT_EQ(table.setLocation(me, location, text), result) << location;

    // Only what is complete gets to the writer.
    EXPECT_EQ(table.setUUID(me, &uuid), RC_OK);
    EXPECT_EQ(table.setName(me, u"N"), RC_OK);
    EXPECT_EQ(table.setVaskVersion(me, u"1.2"), RC_OK);
    EXPECT_EQ(table.commit(me), RC_INCOMPLETE_REGISTRATION);
    EXPECT_EQ(table.setLocation(me, 4, u"r"), RC_OK);
    for (const auto set : {table.setName, table.setVaskVersion}) {
        EXPECT_EQ(set(me, nullptr), RC_OK);
        EXPECT_EQ(table.commit(me), RC_INCOMPLETE_REGISTRATION);
        EXPECT_EQ(set(me, u"x"), RC_OK);
    }
    EXPECT_EQ(table.commit(me), RC_OK);
    const auto without = newRegistrar(writer);
    without->table->setName(without->me, u"N");
    without->table->setVaskVersion(without->me, u"1.2");
    without->table->setLocation(without->me, 4, u"r");
    EXPECT_EQ(without->table->commit(without->me), RC_INCOMPLETE_REGISTRATION);
}

TEST_F(PMCRegistrar, FilesAComponentUnderAllItsNames) {
    Component component = {.name = u"N",
                           .vaskVersion = u"1.2",
                           .description = u"D",
                           .componentVersion = u"4.5",
                           .vendorURL = u"v",
                           .helpURL = u"h",
                           .about = u"a",
                           .progId = u"Test.Pmc.1",
                           .versionIndependentProgId = u"Test.Pmc",
                           .categories = {id(20), id(21), id(20)},
                           .locations = {{0, u"32"}, {1, u"64"}, {4, u"r"}, {5, u"l"}},
                           .flags = 0x80000001};
    const std::string pmc = kPMC;
    const Lines whole = {pmc + ":name=N",
                         pmc + ":vaskversion=1.2",
                         pmc + ":description=D",
                         pmc + ":componentversion=4.5",
                         pmc + ":vendorurl=v",
                         pmc + ":helpurl=h",
                         pmc + ":about=a",
                         pmc + ":progid=Test.Pmc.1",
                         pmc + ":versionindependentprogid=Test.Pmc",
                         pmc + ":flags=-2147483647",
                         pmc + ":inproc32=32",
                         pmc + ":inproc64=64",
                         pmc + ":remote=r",
                         pmc + ":local=l",
                         pmc + "/categories:{ab-14}",
                         pmc + "/categories:{ab-15}",
                         "components/progids:test.pmc.1={ab-01}",
                         "components/progids:test.pmc={ab-01}",
                         "components/categories/{ab-14}:{ab-01}",
                         "components/categories/{ab-15}:{ab-01}"};
    for (const Scope scope : {Scope::user, Scope::machine}) {
        registerComponent(component, scope);
        EXPECT_EQ(privateRegistry(), whole);
        removeScope(scope);
    }

    // What a second registration leaves empty stays; the filing by category doesn't.
    registerComponent(component);
    registerComponent({.name = u"M",
                       .progId = u"TEST.PMC",
                       .versionIndependentProgId = u"TEST.PMC",
                       .categories = {id(22)},
                       .locations = {{4, u"s"}}});
    Lines changed = whole;
    for (const std::string& gone :
         {pmc + ":name=N", pmc + ":vaskversion=1.2", pmc + ":flags=-2147483647", pmc + ":remote=r",
          pmc + ":progid=Test.Pmc.1", pmc + ":versionindependentprogid=Test.Pmc",
          std::string("components/categories/{ab-14}:{ab-01}"),
          std::string("components/categories/{ab-15}:{ab-01}")})
        changed.erase(gone);
    changed.merge(
        lines({pmc + ":name=M", pmc + ":vaskversion=1.3", pmc + ":flags=0", pmc + ":remote=s",
               pmc + ":progid=TEST.PMC", pmc + ":versionindependentprogid=TEST.PMC",
               pmc + "/categories:{ab-16}", "components/categories/{ab-14}",
               "components/categories/{ab-15}", "components/categories/{ab-16}:{ab-01}"}));
    EXPECT_EQ(privateRegistry(), changed);
}

TEST_F(PMCRegistrar, RemovesAComponentUnderAllItsNames) {
    registerComponent({.progId = u"Test.Pmc.1",
                       .versionIndependentProgId = u"Test.Pmc",
                       .categories = {id(20)},
                       .locations = {{4, u"r"}}});
    registerComponent({.number = 2, .categories = {id(20)}, .locations = {{4, u"r"}}});
    const auto writer = newWriter();
    const tarvo::UUID uuid = id(1);
    EXPECT_EQ(writer->table->unregisterPMC(writer->me, &uuid), RC_OK);
    commit(writer);
    const std::string other = "components/pmcs/{ab-02}";
    EXPECT_EQ(privateRegistry(),
              lines({other + ":name=N", other + ":vaskversion=1.3", other + ":flags=0",
                     other + ":remote=r", other + "/categories:{ab-14}", "components/progids",
                     "components/categories/{ab-14}:{ab-02}"}));
}

TEST_F(PMCRegistrar, WorksInTheWriterUntilItsCommit) {
    const tarvo::UUID uuid = id(1);
    const std::string pmc = kPMC;
    const Component component = {.locations = {{4, u"r"}}};
    const Lines tables = {"components/pmcs", "components/progids", "components/categories"};
    const Lines there = {pmc + ":name=N",        pmc + ":vaskversion=1.3", pmc + ":flags=0",
                         pmc + ":remote=r",      pmc + "/categories",      "components/progids",
                         "components/categories"};
    const std::pair<std::function<void(const Writer&)>, Lines> cases[] = {
        {[&](const Writer& w) { add(w, component); }, there},
        {[&](const Writer& w) {
             add(w, {.name = u"first", .about = u"a", .locations = {{5, u"l"}}});
             add(w, component);
         },
         there},
        {[&](const Writer& w) {
             add(w, component);
             w->table->unregisterPMC(w->me, &uuid);
         },
         tables},
        {[&](const Writer& w) {
             w->table->unregisterPMC(w->me, &uuid);
             add(w, component);
         },
         there},
        {[&](const Writer& w) {
             add(w, component);
             w->table->revert(w->me);
         },
         {""}},
        {[&](const Writer& w) {
             commit(w); // empties nothing that comes later
             add(w, component);
         },
         there},
    };
    for (const auto& [act, expected] : cases) {
        removeScope(Scope::user);
        const auto writer = newWriter();
        act(writer);
        EXPECT_NE(privateRegistry(), there);
        commit(writer);
        EXPECT_EQ(privateRegistry(), expected);
    }
}

TEST_F(PMCRegistrar, KeepsARegistrationThatFailedForTheNextCommit) {
    const auto writer = newWriter();
    add(writer, {.locations = {{4, u"r"}}});
    add(writer, {.number = 2, .locations = {{1, u"x"}, {9, u"x"}}});
    commit(newWriter());
    const std::string before = fileText(registryFile(Scope::user));
    EXPECT_EQ(commitOf(writer), RC_INVALID_ARGUMENT);
    EXPECT_EQ(fileText(registryFile(Scope::user)), before);
    EXPECT_EQ(commitOf(writer), RC_INVALID_ARGUMENT);
    const tarvo::UUID bad = id(2);
    EXPECT_EQ(writer->table->unregisterPMC(writer->me, &bad), RC_OK);
    commit(writer);
    EXPECT_TRUE(find(newEnumerator(), 1));
    EXPECT_FALSE(find(newEnumerator(), 2));
    const auto again = newWriter();
    add(again, {.number = 2, .locations = {{-1, u"x"}}});
    EXPECT_EQ(commitOf(again), RC_INVALID_ARGUMENT);
}

TEST_F(PMCRegistrar, OutlivesItsWritersReference) {
    auto writer = newWriter();
    const auto registrar = newRegistrar(writer);
    writer = nullptr;
    EXPECT_EQ(registrar->table->setName(registrar->me, u"N"), RC_OK);
    EXPECT_EQ(registrar->table->commit(registrar->me), RC_INCOMPLETE_REGISTRATION);
}

TEST_F(PMCRegistrar, RemovesSingleLocations) {
    const tarvo::UUID uuid = id(1);
    const TarvoUUID nil{};
    const struct {
        const TarvoUUID* uuid;
        std::int32_t location;
        TarvoResult result;
        const char* left; // of a component at Inproc32, Inproc64 and Remote
    } cases[] = {
        {nullptr, 2, RC_INVALID_ARGUMENT, "014"},
        {nullptr, 0, RC_NULL_POINTER, "014"},
        {&nil, 0, RC_INVALID_ARGUMENT, "014"},
        {&uuid, 3, RC_INVALID_ARGUMENT, "014"},
        {&uuid, -1, RC_INVALID_ARGUMENT, "014"},
        {&uuid, 6, RC_INVALID_ARGUMENT, "014"},
        {&uuid, 5, RC_OK, "014"},
        {&uuid, 0, RC_OK, "14"},
        {&uuid, 1, RC_OK, "04"},
        {&uuid, 4, RC_OK, "01"},
    };
    for (const auto& [asked, location, result, left] : cases) {
        removeScope(Scope::user);
        registerComponent({.locations = {{0, u"32"}, {1, u"64"}, {4, u"r"}}});
        const auto writer = newWriter();
        EXPECT_EQ(writer->table->unregisterPMCLocation(writer->me, asked, location), result);
        commit(writer);
        EXPECT_EQ(locationsOf(*find(newEnumerator(), 1)), left) << location;
    }
    removeScope(Scope::user);
    registerComponent({.locations = {{4, u"r"}}});
    const auto writer = newWriter();
    const tarvo::UUID nobody = id(3);
    EXPECT_EQ(writer->table->unregisterPMCLocation(writer->me, &nobody, 0), RC_OK);
    EXPECT_EQ(writer->table->unregisterPMC(writer->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(writer->table->unregisterPMC(writer->me, &nil), RC_INVALID_ARGUMENT);
    EXPECT_EQ(writer->table->unregisterPMCLocation(writer->me, &uuid, 4), RC_OK);
    commit(writer);
    EXPECT_FALSE(find(newEnumerator(), 1));
}

} // namespace
