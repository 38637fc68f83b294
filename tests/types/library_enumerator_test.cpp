// Which type libraries an enumerator finds in the two scopes, and what it tells of them.
#include "tests/support/registry_files.h"
#include "tests/types/library_id.h"

#include <tarvo/identification.h>
#include <tarvo/identifiers.h>
#include <tarvo/library.h>
#include <tarvo/uuid.hpp>

namespace {

using namespace tests;

using Details = tarvo::Reference<IVaskLibraryDetails>;
using Enumerator = tarvo::Reference<IVaskLibraryEnumerator>;

std::string keyOf(int number) {
    return narrow(idOf(number).string());
}

std::string value(const char* name, const std::string& text, const char* type = "string") {
    return std::string("<value name=\"") + name + "\" type=\"" + type + "\">" + text + "</value>";
}

std::string key(const std::string& name, const std::string& content) {
    return "<key name=\"" + name + "\">" + content + "</key>";
}

// The key of a library; an empty name or version is left out.
std::string library(int number, const std::string& name, const std::string& version,
                    const std::string& more = {}) {
    return key(keyOf(number), (name.empty() ? "" : value("name", name)) +
                                  (version.empty() ? "" : value("version", version)) + more);
}

std::string types(const std::string& libraries, const std::string& interfaces = {}) {
    return key("types", key("libraries", libraries) + key("interfaces", interfaces));
}

Enumerator newEnumerator() {
    Enumerator enumerator;
    EXPECT_EQ(TARVO_CALL(vaskGetLibraryEnumerator)(enumerator.out()), RC_OK);
    return enumerator;
}

Details libraryOf(const Enumerator& enumerator, int number) {
    Details details;
    const tarvo::UUID id = idOf(number);
    const TarvoResult result =
        enumerator->table->getLibraryByUUID(enumerator->me, &id, details.out());
    EXPECT_EQ(result, details ? RC_OK : RC_NOT_AVAILABLE);
    return details;
}

std::u16string textIn(const Details& details, TarvoResult (*slot)(void*, IVaskString*)) {
    tarvo::String text;
    EXPECT_EQ(slot(details->me, text.pair()), RC_OK);
    return text.text();
}

using LibraryEnumerator = EmptyScopes;

TEST_F(LibraryEnumerator, TakesEachLibraryFromTheScopeThatCounts) {
    enum Winner { nobody, user, machine };
    const struct {
        std::string user;
        std::string machine;
        Winner winner;
        const char16_t* version;
    } cases[] = {
        {"", "", nobody, u""},
        {library(1, "user", "1.0"), "", user, u"1.0"},
        {"", library(1, "machine", ""), machine, u""},
        {library(1, "user", "1.0"), library(1, "machine", "1.1"), machine, u"1.1"},
        {library(1, "user", "1.1"), library(1, "machine", "1.1"), user, u"1.1"},
        {library(1, "user", "1.10"), library(1, "machine", "1.9"), user, u"1.10"},
        {library(1, "user", ""), library(1, "machine", "0"), machine, u"0"},
        {library(1, "user", "1"), library(1, "machine", ""), user, u"1"},
        {library(1, "user", ""), library(1, "machine", ""), user, u""},
        {library(1, "", "1"), library(1, "machine", "0.5"), machine, u"0.5"},
        {library(1, "user", "1"), library(1, "", "2"), user, u"1"},
        {library(1, "user", "", value("version", "3", "integer")), library(1, "machine", "0"),
         machine, u"0"},
        {key("no-uuid", value("name", "x")), key("{12}", value("name", "x")), nobody, u""},
    };
    for (const auto& [userContent, machineContent, winner, version] : cases) {
        setScope(Scope::user, types(userContent));
        setScope(Scope::machine, types(machineContent));
        const Details details = libraryOf(newEnumerator(), 1);
        ASSERT_EQ(static_cast<bool>(details), winner != nobody) << userContent << machineContent;
        if (winner == nobody)
            continue;
        EXPECT_EQ(textIn(details, details->table->getName), winner == user ? u"user" : u"machine");
        EXPECT_EQ(textIn(details, details->table->getVersion), version);
        const auto folder =
            registryFile(winner == user ? Scope::user : Scope::machine).parent_path();
        EXPECT_EQ(std::filesystem::path(textIn(details, details->table->getDefinitionPath)),
                  folder / "AB000000-0000-0000-0000-000000000001.tidl");
    }
}

TEST_F(LibraryEnumerator, TellsWhatItKnowsOfALibrary) {
    setScope(Scope::user, types(library(1, "Tides", "1.2",
                                        value("inproc64", "C:\\t.dll") + value("local", "") +
                                            value("com32", "4", "integer"))));
    const Details details = libraryOf(newEnumerator(), 1);
    tarvo::UUID id;
    EXPECT_EQ(details->table->getUUID(details->me, &id), RC_OK);
    EXPECT_EQ(id, idOf(1));
    const struct {
        std::int32_t location;
        TarvoResult result;
        const char16_t* text;
    } locations[] = {{1, RC_OK, u"C:\\t.dll"},      {5, RC_OK, u""},
                     {0, RC_NOT_AVAILABLE, u"was"}, {2, RC_NOT_AVAILABLE, u"was"},
                     {7, RC_NOT_AVAILABLE, u"was"}, {-1, RC_NOT_AVAILABLE, u"was"}};
    for (const auto& [location, result, expected] : locations) {
        tarvo::String text(u"was");
        EXPECT_EQ(details->table->getLocation(details->me, location, text.pair()), result);
        EXPECT_EQ(text.text(), expected);
    }
    // Whatever becomes of a text, it has been given.
    tarvo::ConstantString constant(u"fixed");
    EXPECT_EQ(details->table->getName(details->me, constant.pair()), RC_OK);
    for (auto* slot :
         {details->table->getName, details->table->getVersion, details->table->getDefinitionPath})
        EXPECT_EQ(slot(details->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(details->table->getLocation(details->me, 9, nullptr), RC_NULL_POINTER);

    tarvo::Reference<IVaskInterface> found;
    ASSERT_EQ(details->table->queryInterface(details->me, &kITarvoIdentificationId, found.out()),
              RC_OK);
    auto& identification = *reinterpret_cast<ITarvoIdentification*>(found.get());
    for (int i = 0; i < 2; ++i) {
        tarvo::String text;
        EXPECT_EQ(identification.table->getComponentDescription(identification.me, text.pair()),
                  RC_OK);
        EXPECT_EQ(text.text(), u"Tides type library");
    }
    EXPECT_EQ(identification.table->setComponentName(identification.me, nullptr), RC_READ_ONLY);
}

TEST_F(LibraryEnumerator, ListsOneLibraryForEachName) {
    setScope(Scope::user, types(library(3, "Same", "") + library(9, "Other", "")));
    setScope(Scope::machine, types(library(5, "Same", "")));
    const Enumerator enumerator = newEnumerator();
    for (const int number : {3, 5, 9})
        EXPECT_TRUE(libraryOf(enumerator, number));
    tarvo::Reference<ITarvoCollection> all;
    ASSERT_EQ(enumerator->table->getAllLibraries(enumerator->me, all.out()), RC_OK);
    std::uint32_t count = 0;
    EXPECT_EQ(all->table->getCount(all->me, &count), RC_OK);
    ASSERT_EQ(count, 2u);
    // In the order of identifiers; the machine's library of that name came last.
    for (std::int32_t i = 0; i < 2; ++i) {
        tarvo::Reference<IVaskInterface> item;
        ASSERT_EQ(all->table->getItem(all->me, i, item.out()), RC_OK);
        tarvo::Reference<IVaskInterface> found;
        ASSERT_EQ(item->table->queryInterface(item->me, &kIVaskLibraryDetailsId, found.out()),
                  RC_OK);
        auto& details = *reinterpret_cast<IVaskLibraryDetails*>(found.get());
        tarvo::UUID id;
        EXPECT_EQ(details.table->getUUID(details.me, &id), RC_OK);
        EXPECT_EQ(id, i == 0 ? idOf(5) : idOf(9));
    }
    const struct {
        const char16_t* name;
        TarvoResult result;
    } names[] = {{u"Same", RC_OK}, {u"same", RC_NOT_AVAILABLE}, {nullptr, RC_NULL_POINTER}};
    for (const auto& [name, result] : names) {
        Details details;
        EXPECT_EQ(enumerator->table->getLibraryByName(enumerator->me, name, details.out()), result);
        EXPECT_EQ(static_cast<bool>(details), result == RC_OK);
    }
}

TEST_F(LibraryEnumerator, FindsTheLibraryOfAnInterface) {
    setScope(Scope::user, types(library(1, "Tides", ""),
                                key(keyOf(20), value("library", keyOf(1), "uuid")) +
                                    key(keyOf(21), value("library", keyOf(2), "uuid")) +
                                    key(keyOf(22), value("library", keyOf(1), "string"))));
    const Enumerator enumerator = newEnumerator();
    const struct {
        int interfaceNumber;
        TarvoResult result;
    } cases[] = {
        {20, RC_OK}, {21, RC_NOT_AVAILABLE}, {22, RC_NOT_AVAILABLE}, {23, RC_NOT_AVAILABLE}};
    for (const auto& [number, result] : cases) {
        Details details;
        const tarvo::UUID id = idOf(number);
        EXPECT_EQ(enumerator->table->getLibraryOfInterface(enumerator->me, &id, details.out()),
                  result);
    }
    EXPECT_EQ(enumerator->table->getLibraryOfInterface(enumerator->me, nullptr, nullptr),
              RC_NULL_POINTER);
    EXPECT_EQ(enumerator->table->getAllLibraries(enumerator->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(TARVO_CALL(vaskGetLibraryEnumerator)(nullptr), RC_NULL_POINTER);
}

} // namespace
