// What the details of a COM class tell, by what its key holds.
#include "tests/catalogue/caller.h"

namespace {

using namespace tests;

using COMDetails = EmptyCatalogue;

constexpr auto k32 = RegistryView::view32;
constexpr auto k64 = RegistryView::view64;

constexpr const char16_t* kComponent =
    u"Implemented Categories\\{678C09A1-7d66-11d2-a67d-00105a42887f}";
constexpr const char16_t* kGatedA =
    u"Implemented Categories\\{0D562DC8-EA8E-4210-AB39-B66513C0CD09}";
constexpr const char16_t* kGatedB =
    u"Implemented Categories\\{4150c28a-ee06-403f-a871-87afec38a249}";
constexpr const char16_t* kEnabling =
    u"Implemented Categories\\{4667023A-5a8e-4cca-ab6d-9d78c5112fed}";
constexpr const char16_t* kOther =
    u"Implemented Categories\\{00112233-4455-6677-8899-aabbccddeeff}";
constexpr const char16_t* kAnother =
    u"Implemented Categories\\{AB112233-4455-6677-8899-aabbccddeeff}";
constexpr const char16_t* kNone = u"Implemented Categories\\00112233-4455-6677-8899-aabbccddeeff";

TEST_F(COMDetails, TellWhatTheClassHolds) {
    const struct {
        std::initializer_list<SystemClasses::Value> values;
        const char* expected; // null for a class that can't be used
    } cases[] = {
        {{{u"", u"", u"default"},
          {u"VaskDescription", u"Name", u"N"},
          {u"VaskDescription", u"Description", u"D"},
          {u"VaskDescription", u"VaskVersion", u"1.1"},
          {u"VaskDescription", u"ComponentVersion", u"4.5"},
          {u"VaskDescription", u"About", u"a"},
          {u"VaskDescription", u"VendorURL", u"v"},
          {u"VaskDescription", u"HelpURL", u"h"},
          {u"ProgID", u"", u"P.1"},
          {u"VersionIndependentProgID", u"", u"P"},
          {u"InprocServer32", u"ThreadingModel", u"APARTMENT"},
          {kOther, u"", nullptr}},
         "name=N, description=D, standard=1.2, version=4.5, vendor=v, help=h, about=a, "
         "progId=P.1, independent=P, flags=1, in=00112233, in=37e03033, at=3"},
        {{{u"", u"", u"default"}}, "name=default, at=3"},
        {{}, "name={AB000000-0000-0000-0000-000000000001}, at=3"},
        {{{u"", u"", u"d"}, {u"VaskDescription", u"VaskVersion", u"1.0"}},
         "name=d, standard=1.2, at=3"},
        {{{u"", u"", u"d"}, {u"VaskDescription", u"VaskVersion", u"1.00"}},
         "name=d, standard=1.00, at=3"},
        {{{u"", u"", u"d"}, {u"InprocServer32", u"ThreadingModel", u"Both"}}, "name=d, at=3"},
        {{{u"", u"", u"d"}, {u"InprocServer32", u"ThreadingModel", u"Neutral"}}, "name=d, at=3"},
        {{{u"", u"", u"d"}, {u"InprocServer32", u"", u"server"}}, "name=d, at=3"},
        {{{u"InprocServer32", u"ThreadingModel", u"SINGLE"}}, nullptr},
        {{{u"", u"", u"d"}, {u"Implemented Categories", u"", nullptr}},
         "name=d, in=37e03033, at=3"},
        {{{u"", u"", u"d"}, {kComponent, u"", nullptr}, {kNone, u"", nullptr}},
         "name=d, in=37e03033, at=3"},
        {{{kGatedA, u"", nullptr}}, nullptr},
        {{{kGatedB, u"", nullptr}, {kOther, u"", nullptr}}, nullptr},
        {{{u"", u"", u"d"},
          {kGatedA, u"", nullptr},
          {kGatedB, u"", nullptr},
          {kEnabling, u"", nullptr},
          {kAnother, u"", nullptr}},
         "name=d, in=37e03033, in=ab112233, at=3"},
        {{{u"", u"", u"d"}, {kEnabling, u"", nullptr}}, "name=d, in=37e03033, at=3"},
    };
    for (const auto& [values, expected] : cases) {
        classes.clear();
        classes.add(k64, 1, values);
        const auto details = find(newEnumerator(), 1);
        ASSERT_EQ(static_cast<bool>(details), expected != nullptr);
        if (details) {
            EXPECT_EQ(describe(*details), expected);
        }
    }
}

TEST_F(COMDetails, TakeTextsAsTheyAreStored) {
    using support::StoredValue;
    const std::pair<StoredValue, const char*> cases[] = {
        {{1, support::bytesOf(u"text")}, "text"}, // without a terminator
        {{1, support::textBytes(std::u16string(u"a\0b", 3))}, "a"},
        {{1, {'a', 0, 'b', 0, 'c'}}, "ab"},
        {{1, {'a'}}, ""},
        {{1, {}}, ""},
        {{1, support::textBytes(u"")}, ""},
        {{2, support::textBytes(u"expanded")}, ""},
        {{3, support::textBytes(u"binary")}, ""},
        {{4, {'a', 0, 0, 0}}, ""},
        {{7, support::textBytes(u"list")}, ""},
        {{1, support::bytesOf(std::u16string(0x10000, u'x'))}, nullptr},
    };
    for (const auto& [stored, expected] : cases) {
        classes.clear();
        classes.add(k64, 1, {{u"VaskDescription", u"Name", u"N"}});
        const SystemKey texts = classes.make(k64, u"CLSID\\" + classText(1) + u"\\VaskDescription");
        EXPECT_TRUE(support::store(texts, u"About", stored));
        EXPECT_TRUE(texts.setText(u"VendorURL", u"short"));
        tarvo::String about;
        tarvo::String vendor;
        const auto details = find(newEnumerator(), 1);
        EXPECT_EQ(details->table->getAbout(details->me, about.pair()), RC_OK);
        EXPECT_EQ(narrow(about.text()), expected ? expected : std::string(0x10000, 'x'));
        EXPECT_EQ(details->table->getVendorURL(details->me, vendor.pair()), RC_OK);
        EXPECT_EQ(vendor.text(), u"short"); // nothing is left of longer ones
    }
}

TEST_F(COMDetails, TellOfTheViewsInWhichTheClassIs) {
    const struct {
        bool in32;
        bool in64;
        bool user32; // whether the class is also the current user's
        bool user64;
        const char* locations;
        std::uint32_t allUsers[6];
    } cases[] = {
        {true, false, false, false, "2", {1, 1, 1, 1, 1, 1}},
        {true, false, true, false, "2", {1, 1, 0, 1, 1, 1}},
        {false, true, false, true, "3", {0, 0, 1, 0, 0, 0}},
        {true, true, true, true, "23", {0, 0, 0, 0, 0, 0}},
    };
    for (const auto& [in32, in64, user32, user64, locations, allUsers] : cases) {
        classes.clear();
        if (in32)
            classes.add(k32, 1, {{u"", u"", u"32"}});
        if (in64)
            classes.add(k64, 1, {{u"", u"", u"64"}});
        for (const auto& [view, isThere] : {std::pair(k32, user32), std::pair(k64, user64)})
            if (isThere)
                classesOf(RegistryRoot::currentUser, view)
                    .create((u"CLSID\\" + classText(1)).c_str(), view);
        const auto details = find(newEnumerator(), 1);
        const auto& table = *details->table;
        EXPECT_EQ(locationsOf(*details), locations);
        for (std::uint32_t location = 0; location < 6; ++location) {
            const bool isThere = (location == 2 && in32) || (location == 3 && in64);
            tarvo::String text(u"-");
            std::uint32_t told = 9;
            EXPECT_EQ(table.getLocation(details->me, location, text.pair()),
                      isThere ? RC_OK : RC_NOT_FOUND);
            EXPECT_EQ(text.text(), isThere ? idText(1) : u"-");
            EXPECT_EQ(table.isLocationAllUsers(details->me, location, &told), RC_OK);
            EXPECT_EQ(told, allUsers[location]) << locations << location;
        }
    }
}

TEST_F(COMDetails, AreReadFromTheFirstViewInWhichTheClassCanBeUsed) {
    classes.add(k32, 1, {{u"", u"", u"32"}, {u"InprocServer32", u"ThreadingModel", u"single"}});
    classes.add(k64, 1, {{u"", u"", u"64"}});
    EXPECT_EQ(describe(*find(newEnumerator(), 1)), "name=64, at=3");
    classes.add(k32, 1, {{u"InprocServer32", u"ThreadingModel", u"both"}});
    EXPECT_EQ(describe(*find(newEnumerator(), 1)), "name=32, at=23");
    classes.add(k32, 1, {{u"InprocServer32", u"ThreadingModel", u"single"}});
    classes.add(k64, 1, {{u"InprocServer32", u"ThreadingModel", u"single"}});
    EXPECT_FALSE(find(newEnumerator(), 1));
}

TEST_F(COMDetails, LeaveTheCallerWithWhatItGaveThem) {
    classes.add(k64, 1, {{kOther, u"", nullptr}});
    const auto details = find(newEnumerator(), 1);
    tarvo::String emptied(u"-");
    EXPECT_EQ(details->table->getDescription(details->me, emptied.pair()), RC_OK);
    EXPECT_EQ(emptied.text(), u"");
    expectCallersFaults(*details, {RC_READ_ONLY, RC_READ_ONLY, RC_READ_ONLY});
    expectThreeInterfaces(*details);
}

} // namespace
