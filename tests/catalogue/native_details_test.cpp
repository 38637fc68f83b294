// What the details of a native component tell, by what its key holds in the two scopes.
#include "tests/catalogue/caller.h"

namespace {

using namespace tests;

using NativeDetails = EmptyCatalogue;

Details native(std::string_view user, std::string_view machine = "") {
    setScope(Scope::user, pmcs(user));
    setScope(Scope::machine, pmcs(machine));
    return find(newEnumerator(), 1);
}

TEST_F(NativeDetails, TellWhatTheKeysOfBothScopesHold) {
    const std::string whole =
        text(u"name", "N") + text(u"description", "D") + text(u"vaskversion", "1.2") +
        text(u"componentversion", "4.5") + text(u"vendorurl", "v") + text(u"helpurl", "h") +
        text(u"about", "a") + text(u"progid", "P.1") + text(u"versionindependentprogid", "P") +
        value(u"flags", "integer", "1") + text(u"inproc32", "32") + text(u"inproc64", "64") +
        text(u"com32", "c") + text(u"com64", "C") + text(u"remote", "r") + text(u"local", "l") +
        key(u"categories", emptyValue(idText(0)) + emptyValue(u"{no identifier}") +
                               emptyValue(idText(0) + u" ") + text(idText(2), ""));
    const std::pair<Details, const char*> cases[] = {
        {native(pmc(1, whole)),
         "name=N, description=D, standard=1.2, version=4.5, vendor=v, help=h, about=a, progId=P.1, "
         "independent=P, flags=1, in=ab000000, in=ab000000, at=012345"},
        {native("", pmc(1, "")), "name=500, standard=500"},
        {native(pmc(1, text(u"versionindependentprogid", "P") + text(u"local", ""))),
         "name=500, standard=500, progId=P, independent=P"},
        {native(pmc(1, value(u"name", "integer", "1") + text(u"flags", "1") +
                           value(u"inproc64", "integer", "1")),
                pmc(1, whole)), // hides the other scope's values all the same
         "name=503, description=D, standard=1.2, version=4.5, vendor=v, help=h, about=a, "
         "progId=P.1, independent=P, flags=503, in=ab000000, in=ab000000, at=02345"},
    };
    for (const auto& [details, expected] : cases)
        EXPECT_EQ(describe(*details), expected);
}

TEST_F(NativeDetails, TellOfEachLocationWhoseItIs) {
    const auto details = native(pmc(1, text(u"local", "user's") + text(u"inproc32", "")),
                                pmc(1, text(u"local", "all") + text(u"remote", "all")));
    const struct {
        std::uint32_t location;
        TarvoResult result;
        std::uint32_t allUsers;
        const char16_t* text;
    } cases[] = {
        {0, RC_OK, 0, u""},       {1, RC_NOT_FOUND, 0, u"-"}, {4, RC_OK, 1, u"all"},
        {5, RC_OK, 0, u"user's"}, {6, RC_NOT_FOUND, 9, u"-"}, {~0u, RC_NOT_FOUND, 9, u"-"},
    };
    for (const auto& [location, result, allUsers, expected] : cases) {
        tarvo::String text(u"-");
        std::uint32_t told = 9;
        EXPECT_EQ(details->table->getLocation(details->me, location, text.pair()), result);
        EXPECT_EQ(text.text(), expected) << location;
        EXPECT_EQ(details->table->isLocationAllUsers(details->me, location, &told), result);
        EXPECT_EQ(told, allUsers) << location;
    }
}

TEST_F(NativeDetails, LeaveTheCallerWithWhatItGaveThem) {
    const auto details =
        native(pmc(1, text(u"name", "N") + text(u"about", "a") + text(u"local", "l") +
                          key(u"categories", emptyValue(idText(0)) + emptyValue(idText(2)))));
    tarvo::String untouched(u"-");
    EXPECT_EQ(details->table->getDescription(details->me, untouched.pair()), RC_OK);
    EXPECT_EQ(details->table->getVaskVersion(details->me, untouched.pair()), RC_NOT_FOUND);
    EXPECT_EQ(untouched.text(), u"-");
    expectCallersFaults(*details, {.text = RC_READ_ONLY, .optionalText = RC_OK, .item = RC_OK});
}

TEST_F(NativeDetails, AnswerFromTheStateOfTheirEnumerator) {
    const auto details = native(pmc(1, text(u"name", "before")));
    const auto shown = describe(*details);
    setScope(Scope::user, pmcs(""));
    EXPECT_EQ(describe(*details), shown);
    EXPECT_FALSE(find(newEnumerator(), 1));
}

TEST_F(NativeDetails, AreOneObjectWithThreeInterfaces) {
    expectThreeInterfaces(*native(pmc(1, "")));
}

} // namespace
