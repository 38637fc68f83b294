// Type libraries on their way into a scope and out of it, with a parser that gives what each case
// asks for.
#include "tests/support/registry_writers.h"
#include "tests/types/library_id.h"
#include "tests/types/parser_scenario.h"

#include <tarvo/uuid.hpp>

namespace {

using namespace tests;

std::u16string keyOf(const char16_t* table, int number) {
    return std::u16string(u"/types/") + table + u"/" + idOf(number).string();
}

std::filesystem::path definitionOf(int number) {
    char name[64];
    std::snprintf(name, sizeof name, "AB000000-0000-0000-0000-0000000000%02X.tidl", number);
    return registryFile(Scope::user).parent_path() / name;
}

TarvoResult registerLibrary(const Writer& writer, Scenario& scenario) {
    const TarvoResult result =
        writer->table->registerLibrary(writer->me, reinterpret_cast<const char16_t*>(&scenario));
    EXPECT_EQ(scenario.objectsAlive, 0);
    return result;
}

std::u16string valueAt(const std::u16string& path, const char16_t* name) {
    tarvo::Reference<IVaskRegistryKey> key;
    if (openKey(path.c_str(), key) != RC_OK)
        return u"<no key>";
    return textOf(*key, name);
}

bool exists(const std::u16string& path) {
    tarvo::Reference<IVaskRegistryKey> key;
    return openKey(path.c_str(), key) == RC_OK;
}

class LibraryRegistration : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        // The parser is looked for at each call until it is there.
        const std::u16string library = wide(TARVO_TEST_LIBRARY);
        const std::u16string place =
            library.substr(0, library.rfind(u'/') + 1) + u"TARVOIDLParser.dll";
        Scenario scenario;
        TARVO::platform::removeFile(place);
        EXPECT_EQ(registerLibrary(newWriter(), scenario), RC_PARSER_FAILED);
        ASSERT_TRUE(TARVO::platform::copyFileOver(wide(TARVO_TEST_PARSER), place));
    }
    void SetUp() override {
        removeScope(Scope::user);
        source_ = registryFile(Scope::user).parent_path() / "source.tidl";
        writeFile(source_, "the definition");
    }
    void TearDown() override {
        removeScope(Scope::user);
        std::filesystem::remove(source_);
        for (const int number : {1, 2})
            std::filesystem::remove(definitionOf(number));
    }

    ScenarioLibrary library(int number, std::u16string version = u"1.0") const {
        ScenarioLibrary library;
        library.id = idOf(number);
        library.name = u"Library " + std::u16string(1, static_cast<char16_t>(u'0' + number));
        library.version = std::move(version);
        library.path = source_.u16string();
        return library;
    }

    void registerAndCommit(ScenarioLibrary library) const {
        Scenario scenario;
        scenario.libraries.push_back(std::move(library));
        const Writer writer = newWriter();
        EXPECT_EQ(registerLibrary(writer, scenario), RC_OK);
        commit(writer);
    }

    std::filesystem::path source_;
};

TEST_F(LibraryRegistration, WritesAllThatADefinitionDefines) {
    Scenario scenario;
    scenario.libraries = {library(1), library(2, u"")};
    scenario.libraries[0].categories = {{idOf(10), u"Clocks"}};
    scenario.libraries[0].enumerations = {{idOf(11), u"Hours"}, {idOf(12), u"Days"}};
    scenario.libraries[1].interfaces = {{idOf(13), u"IClock"}, {idOf(14), u"IList", 2}};
    const Writer writer = newWriter();
    ASSERT_EQ(registerLibrary(writer, scenario), RC_OK);
    EXPECT_FALSE(exists(u"/types")); // until the commit
    commit(writer);

    const struct {
        std::u16string path;
        const char16_t* name;
        int library;
    } items[] = {{keyOf(u"categories", 10), u"Clocks", 1},
                 {keyOf(u"enumerations", 11), u"Hours", 1},
                 {keyOf(u"enumerations", 12), u"Days", 1},
                 {keyOf(u"interfaces", 13), u"IClock", 2},
                 {keyOf(u"interfaces", 14), u"IList", 2}};
    for (const auto& [path, name, libraryNumber] : items) {
        const auto key = keyAt(path.c_str());
        EXPECT_EQ(textOf(*key, u"name"), name);
        tarvo::UUID owner;
        EXPECT_EQ(key->table->getUUIDValue(key->me, u"library", nullptr, &owner), RC_OK);
        EXPECT_EQ(owner, idOf(libraryNumber));
        std::int32_t arguments = 0;
        const TarvoResult result =
            key->table->getIntegerValue(key->me, u"numberoftemplatearguments", nullptr, &arguments);
        EXPECT_EQ(result, name == std::u16string_view(u"IList") ? RC_OK : RC_NOT_FOUND);
        EXPECT_EQ(arguments, result == RC_OK ? 2 : 0);
    }
    EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"name"), u"Library 1");
    EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"version"), u"1.0");
    EXPECT_EQ(valueAt(keyOf(u"libraries", 2), u"version"), u"<500>");
    EXPECT_EQ(fileText(definitionOf(1)), "the definition");
    EXPECT_EQ(fileText(definitionOf(2)), "the definition");

    Scenario empty;
    const Writer another = newWriter(Scope::user);
    EXPECT_EQ(registerLibrary(another, empty), RC_OK);
    commit(another);
    EXPECT_TRUE(exists(u"/types/categories"));
}

TEST_F(LibraryRegistration, PassesOverWhatTheVersionRuleKeepsOut) {
    const struct {
        const char16_t* registered;
        const char16_t* defined;
        bool isWritten;
    } cases[] = {
        {u"1.0", u"1.0", true},  {u"1.0", u"1.0.0", true}, {u"1.1", u"1.0", true},
        {u"1.0", u"1.1", false}, {u"1.0", u"", false},     {u"", u"", true},
        {u"", u"1.0", true},
    };
    for (const auto& [registered, defined, isWritten] : cases) {
        removeScope(Scope::user);
        registerAndCommit(library(1, registered));
        ScenarioLibrary renamed = library(1, defined);
        renamed.name = u"Renamed";
        registerAndCommit(renamed);
        EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"name"), isWritten ? u"Renamed" : u"Library 1");
    }
    // What counts is the file, not what the writer has recorded.
    removeScope(Scope::user);
    Scenario scenario;
    scenario.libraries = {library(1, u"1.0"), library(1, u"2.0")};
    const Writer writer = newWriter();
    EXPECT_EQ(registerLibrary(writer, scenario), RC_OK);
    commit(writer);
    EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"version"), u"2.0");
}

TEST_F(LibraryRegistration, EndsWithTheCodeOfAParserThatFails) {
    const struct {
        std::u16string message;
        TarvoResult libraryResult;
        TarvoResult interfaceResult;
        bool givesInterfaces;
        TarvoResult result;
    } cases[] = {
        {u"line 1: what?", RC_OK, RC_OK, true, RC_PARSER_FAILED},
        {u"", 77, RC_OK, true, 77},
        {u"", RC_OK, 78, true, 78},
        {u"", RC_OK, RC_OK, false, RC_NULL_POINTER},
    };
    for (const auto& [message, libraryResult, interfaceResult, givesInterfaces, result] : cases) {
        Scenario scenario;
        scenario.libraries = {library(1)};
        scenario.libraries[0].interfaces = {{idOf(13), u"IClock"}};
        scenario.message = message;
        scenario.libraryResult = libraryResult;
        scenario.interfaceResult = interfaceResult;
        scenario.givesInterfaces = givesInterfaces;
        EXPECT_EQ(registerLibrary(newWriter(), scenario), result);
    }
    const Writer writer = newWriter();
    EXPECT_EQ(writer->table->registerLibrary(writer->me, nullptr), RC_PARSER_FAILED);
}

TEST_F(LibraryRegistration, GoesWithAllItsItems) {
    ScenarioLibrary first = library(1);
    first.categories = {{idOf(10), u"Clocks"}};
    first.interfaces = {{idOf(13), u"IClock"}};
    ScenarioLibrary second = library(2);
    second.enumerations = {{idOf(11), u"Hours"}};
    registerAndCommit(first);
    registerAndCommit(second);
    {
        const Writer writer = newWriter();
        const KeyWriter odd = keyWriter(writer, keyOf(u"categories", 15).c_str());
        setText(odd, u"library", idOf(1).string().c_str());
        commit(writer);
    }
    const Writer writer = newWriter();
    const tarvo::UUID gone = idOf(1);
    EXPECT_EQ(writer->table->unregisterLibrary(writer->me, &gone), RC_OK);
    EXPECT_TRUE(std::filesystem::exists(definitionOf(1)));
    commit(writer);
    EXPECT_FALSE(exists(keyOf(u"libraries", 1)));
    EXPECT_FALSE(exists(keyOf(u"categories", 10)));
    EXPECT_FALSE(exists(keyOf(u"interfaces", 13)));
    EXPECT_FALSE(std::filesystem::exists(definitionOf(1)));
    EXPECT_TRUE(exists(keyOf(u"categories", 15))); // its owner is a text
    EXPECT_TRUE(exists(keyOf(u"libraries", 2)));
    EXPECT_TRUE(exists(keyOf(u"enumerations", 11)));
    EXPECT_TRUE(std::filesystem::exists(definitionOf(2)));

    // One that isn't there goes all the same.
    EXPECT_EQ(writer->table->unregisterLibrary(writer->me, &gone), RC_OK);
    EXPECT_EQ(writer->table->unregisterLibrary(writer->me, nullptr), RC_NULL_POINTER);
    commit(writer);
}

TEST_F(LibraryRegistration, HasLocationsOfItsOwn) {
    const Writer writer = newWriter();
    const IVaskRegistryWriterTable& table = *writer->table;
    const tarvo::UUID id = idOf(1);
    const tarvo::UUID nil;
    const struct {
        const tarvo::UUID* library;
        std::uint32_t location;
        const char16_t* text;
        TarvoResult setResult;
        TarvoResult removeResult;
    } cases[] = {
        {nullptr, 4, nullptr, RC_INVALID_ARGUMENT, RC_INVALID_ARGUMENT},
        {nullptr, 0, nullptr, RC_NULL_POINTER, RC_NULL_POINTER},
        {nullptr, 0, u"x", RC_NULL_POINTER, RC_NULL_POINTER},
        {&nil, 0, nullptr, RC_NULL_POINTER, RC_INVALID_ARGUMENT},
        {&nil, 0, u"x", RC_INVALID_ARGUMENT, RC_INVALID_ARGUMENT},
        {&id, 3, u"x", RC_OK, RC_OK},
    };
    for (const auto& [library, location, text, setResult, removeResult] : cases) {
        EXPECT_EQ(table.setLibraryLocation(writer->me, library, location, text), setResult);
        EXPECT_EQ(table.removeLibraryLocation(writer->me, library, location), removeResult);
    }
    EXPECT_EQ(table.setLibraryLocation(writer->me, &id, 0, u""), RC_OK);
    EXPECT_EQ(table.setLibraryLocation(writer->me, &id, 1, u"/tides.dll"), RC_OK);
    commit(writer);
    EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"inproc32"), u"");
    EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"inproc64"), u"/tides.dll");
    EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"com64"), u"<500>");
    EXPECT_EQ(table.removeLibraryLocation(writer->me, &id, 1), RC_OK);
    commit(writer);
    EXPECT_EQ(valueAt(keyOf(u"libraries", 1), u"inproc64"), u"<500>");
}

TEST_F(LibraryRegistration, LeavesAFileThatStandsInItsPlaceAlready) {
    Scenario scenario;
    scenario.libraries = {library(1)};
    scenario.libraries[0].path = definitionOf(1).u16string(); // stands where it belongs
    writeFile(definitionOf(1), "in place");
    const Writer writer = newWriter();
    ASSERT_EQ(registerLibrary(writer, scenario), RC_OK);
    commit(writer);
    EXPECT_EQ(fileText(definitionOf(1)), "in place");
}

} // namespace
