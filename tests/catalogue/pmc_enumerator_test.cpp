// Which components the enumerator finds, of what is in the two registries.
#include "tests/support/components.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

using namespace tests;

constexpr auto k32 = RegistryView::view32;
constexpr auto k64 = RegistryView::view64;
constexpr std::string_view kMarkingLibrary = "{3b78cdeb-7fe8-4542-b58b-26205774d82a}";

// The path that files a class under the category of a number.
std::u16string filed(std::uint8_t category) {
    return u"Implemented Categories\\" + classText(category);
}

std::string typeCategory(std::u16string_view name, std::string_view content) {
    return key(u"types", key(u"categories", key(name, content)));
}
// The type library's registration of category 30, which makes classes components.
const std::string kMarking =
    typeCategory(idText(30), text(u"name", "C") + value(u"library", "uuid", kMarkingLibrary));

Items all(const Enumerator& enumerator) {
    Collection pmcs;
    EXPECT_EQ(enumerator->table->getAllPMCs(enumerator->me, pmcs.out()), RC_OK);
    return itemsOf(pmcs);
}

Items inCategories(const Enumerator& enumerator, const std::vector<tarvo::UUID>& categories) {
    std::vector<TarvoUUID> uuids(categories.begin(), categories.end());
    uuids.resize(uuids.size() + 1); // so that there is an address
    Collection pmcs;
    EXPECT_EQ(enumerator->table->getPMCsInCategories(enumerator->me, uuids.data(),
                                                     static_cast<std::uint32_t>(categories.size()),
                                                     pmcs.out()),
              RC_OK);
    return itemsOf(pmcs);
}

using PMCEnumerator = EmptyCatalogue;

TEST_F(PMCEnumerator, ListsEachComponentOnceInOrder) {
    const std::string native = text(u"inproc64", "x");
    setScope(Scope::user, pmcs(pmc(5, native) + key(u"no identifier", native) +
                               key(u"{ab000000-0000-0000-0000}", native)));
    setScope(Scope::machine, pmcs(pmc(3, native) + pmc(5, native)) + kMarking);
    const auto f30 = filed(30);
    for (const auto view : {k32, k64}) {
        classes.add(view, 4, {{f30.c_str(), u"", nullptr}});
        classes.add(view, 5, {{f30.c_str(), u"", nullptr}});
        classes.add(
            view, 9,
            {{u"InprocServer32", u"ThreadingModel", u"Single"}, {f30.c_str(), u"", nullptr}});
    }
    classes.add(k32, 2, {{filed(29).c_str(), u"", nullptr}, {f30.c_str(), u"", nullptr}});
    classes.add(k64, 2, {{filed(29).c_str(), u"", nullptr}});
    classes.add(k64, 6, {{filed(29).c_str(), u"", nullptr}});
    classes.add(k64, 7);
    classes.make(k64, u"CLSID\\no class\\" + f30);
    classes.make(k64, u"CLSID\\" + std::u16string(128, u'x') + u"\\" + f30);
    classes.make(k64, u"CLSID\\" + classText(8) + u"\\Implemented Categories\\" +
                          std::u16string(200, u'x'));
    const auto enumerator = newEnumerator();
    EXPECT_EQ(all(enumerator), (Items{"02[2]", "03[1]", "04[23]", "05[1]"}));
    classes.add(k64, 6, {{f30.c_str(), u"", nullptr}});
    EXPECT_EQ(all(enumerator), (Items{"02[2]", "03[1]", "04[23]", "05[1]", "06[3]"}));
    EXPECT_EQ(describe(*find(enumerator, 5)), "name=500, standard=500, at=1");
    EXPECT_EQ(find(enumerator, 10), nullptr);
}

TEST_F(PMCEnumerator, TakesTheMarkingCategoriesFromTheTypeRegistry) {
    classes.add(k64, 1, {{filed(30).c_str(), u"", nullptr}});
    const auto library = value(u"library", "uuid", kMarkingLibrary);
    const std::pair<std::string, bool> cases[] = {
        {kMarking, true},
        {typeCategory(idText(30), text(u"name", "") + library), true},
        {"", false},
        {typeCategory(idText(30), library), false},
        {typeCategory(idText(30), value(u"name", "integer", "1") + library), false},
        {typeCategory(idText(30), text(u"name", "C")), false},
        {typeCategory(idText(30), text(u"name", "C") + text(u"library", kMarkingLibrary)), false},
        {typeCategory(idText(30),
                      text(u"name", "C") + value(u"library", "uuid", narrow(idText(1)))),
         false},
        {typeCategory(u"category", text(u"name", "C") + library), false},
    };
    for (const auto& [types, marks] : cases) {
        setScope(Scope::machine, types);
        EXPECT_EQ(all(newEnumerator()), marks ? Items{"01[3]"} : Items{}) << types;
    }
}

TEST_F(PMCEnumerator, ListsTheComponentsOfCategories) {
    const auto filing = [](std::uint8_t number, std::initializer_list<std::uint8_t> own) {
        std::string names;
        for (const std::uint8_t category : own)
            names += emptyValue(idText(category));
        return pmc(number, text(u"local", "x") + key(u"categories", names));
    };
    const auto listing = [](std::uint8_t category, std::string_view names) {
        return key(idText(category), names);
    };
    setScope(Scope::user,
             key(u"components",
                 key(u"pmcs", filing(1, {20, 21}) + filing(2, {21}) + filing(5, {20})) +
                     key(u"categories",
                         listing(20, emptyValue(idText(1)) + emptyValue(idText(2)) +
                                         emptyValue(idText(3)) + emptyValue(u"no identifier")) +
                             listing(21, emptyValue(idText(1)) + emptyValue(idText(2))))));
    classes.add(k32, 3, {{filed(20).c_str(), u"", nullptr}});
    classes.add(k64, 3, {{filed(20).c_str(), u"", nullptr}});
    classes.add(k64, 1, {{filed(20).c_str(), u"", nullptr}});
    classes.add(k64, 4, {{filed(22).c_str(), u"", nullptr}});
    const auto enumerator = newEnumerator();
    EXPECT_EQ(inCategories(enumerator, {id(20)}), (Items{"01[5]", "03[23]"}));
    EXPECT_EQ(inCategories(enumerator, {id(21)}), (Items{"01[5]", "02[5]"}));
    EXPECT_EQ(inCategories(enumerator, {id(22), id(21), id(20)}),
              (Items{"01[5]", "02[5]", "03[23]", "04[3]"}));
    EXPECT_EQ(inCategories(enumerator, {id(23)}), Items{});
    EXPECT_EQ(inCategories(enumerator, {}), Items{});

    // An answer stays the enumerator's own.
    setScope(Scope::user, "");
    classes.add(k64, 6, {{filed(20).c_str(), u"", nullptr}});
    EXPECT_EQ(inCategories(enumerator, {id(20)}), (Items{"01[5]", "03[23]"}));
    EXPECT_EQ(inCategories(newEnumerator(), {id(20)}), (Items{"01[3]", "03[23]", "06[3]"}));
}

TEST_F(PMCEnumerator, FindsTheComponentOfAProgId) {
    const auto progIds = key(u"progids", value(u"test.pmc", "uuid", narrow(idText(1))) +
                                             value(u"gone", "uuid", narrow(idText(3))) +
                                             text(u"wrong", "x") + text(u"broken", "x") +
                                             value(u"gone.but.com", "uuid", narrow(idText(2))));
    setScope(Scope::user, key(u"components", key(u"pmcs", pmc(1, text(u"local", "x"))) + progIds));
    classes.add(k64, 2);
    classes.add(k32, 4);
    classes.addProgId(k64, u"Test.Pmc", classText(2)); // the native component hides it
    classes.addProgId(k64, u"Test.Class", classText(2));
    classes.addProgId(k64, u"Test.Native", idText(1));
    classes.addProgId(k64, u"Test.Gone", classText(3));
    classes.addProgId(k64, u"Test.Empty", u"");
    classes.addProgId(k64, u"Test.None", u"class");
    classes.addProgId(k64, u"Wrong", classText(4));
    const struct {
        const char16_t* progId;
        TarvoResult result;
        std::uint8_t number;
    } cases[] = {
        {u"TEST.pmc", RC_OK, 1},
        {u"test.CLASS", RC_OK, 2},
        {u"WRONG", RC_OK, 4},
        {u"gone.but.com", RC_NOT_FOUND, 0}, // its class is none of that ProgID
        {u"Test.Native", RC_NOT_FOUND, 0},  // no class
        {u"gone", RC_NOT_FOUND, 0},
        {u"Test.Gone", RC_NOT_FOUND, 0},
        {u"Test.Empty", RC_NOT_FOUND, 0},
        {u"Test.None", RC_NOT_FOUND, 0},
        {u"broken", RC_WRONG_VALUE_TYPE, 0},
        {u"nobody", RC_NOT_FOUND, 0},
        {u"", RC_INVALID_ARGUMENT, 0},
        {nullptr, RC_NULL_POINTER, 0},
    };
    const auto enumerator = newEnumerator();
    for (const auto& [progId, result, number] : cases) {
        Details details;
        tarvo::UUID uuid;
        EXPECT_EQ(enumerator->table->getPMCByProgId(enumerator->me, progId, details.out()), result);
        if (details)
            details->table->getUUID(details->me, &uuid);
        EXPECT_EQ(uuid, result == RC_OK ? id(number) : tarvo::UUID())
            << narrow(progId ? progId : u"null");
    }
}

TEST_F(PMCEnumerator, ChecksPointersFirst) {
    EXPECT_EQ(TARVO_CALL(vaskGetPMCEnumerator)(nullptr), RC_NULL_POINTER);
    const auto enumerator = newEnumerator();
    const auto& table = *enumerator->table;
    void* const me = enumerator->me;
    const tarvo::UUID uuid = id(1);
    Details details;
    Collection pmcs;
    EXPECT_EQ(table.getPMCByUUID(me, nullptr, details.out()), RC_NULL_POINTER);
    EXPECT_EQ(table.getPMCByUUID(me, &uuid, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getPMCByProgId(me, u"", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getPMCsInCategories(me, nullptr, 0, pmcs.out()), RC_NULL_POINTER);
    EXPECT_EQ(table.getPMCsInCategories(me, &uuid, 1, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getAllPMCs(me, nullptr), RC_NULL_POINTER);
}

TEST_F(PMCEnumerator, SurvivesClassesThatComeAndGoMeanwhile) {
    setScope(Scope::machine, pmcs(pmc(5, text(u"local", "x"))) + kMarking);
    const auto f30 = filed(30);
    classes.add(k32, 4, {{f30.c_str(), u"", nullptr}});
    std::atomic<bool> stop = false;
    std::thread other([&] {
        while (!stop)
            for (std::uint8_t number = 6; number < 12; ++number) {
                classes.add(k64, number, {{f30.c_str(), u"", nullptr}});
                classesOf(RegistryRoot::localMachine, k64)
                    .deleteTree((u"CLSID\\" + classText(number)).c_str(), k64);
            }
    });
    const auto enumerator = newEnumerator();
    for (int i = 0; i < 100; ++i) {
        const Items items = all(enumerator);
        EXPECT_TRUE(std::ranges::is_sorted(items));
        EXPECT_EQ(items.at(0), "04[2]");
        EXPECT_EQ(items.at(1), "05[5]");
    }
    stop = true;
    other.join();
}

} // namespace
