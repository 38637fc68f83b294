// Which location decides, in which order a component is asked, and how its own library creates it.
#include "tests/instantiation/creation_fixture.h"

#include <filesystem>

namespace {

using namespace tests;

bool gateIsClosed() {
    return TARVO::platform::isElevated() && !TARVO::platform::isWine();
}

TEST(Creation, AsksInOrderAndLetsTheFirstLocationDecide) {
    const std::u16string library = builtModule("component.dll");
    const std::u16string missing = builtModule("missing.dll");
    const struct {
        std::map<std::uint32_t, std::u16string> locations;
        std::uint32_t flags;
        TarvoResult uuidResult, flagsResult;
        std::uint32_t componentFlags;
        Outcome outcome;
        const char* asked;
    } cases[] = {
        {{},
         0,
         0,
         0,
         0,
         {RC_CANNOT_CREATE, Outcome::null},
         "uuid location1 location3 location0 location2 location5 location4"},
        {{{1, library}}, 2, 0, 0, 0, {RC_INVALID_ARGUMENT, Outcome::untouched}, ""},
        {{{1, library}}, 0, 77, 0, 0, {77, Outcome::untouched}, "uuid"},
        {{{1, library}}, 0, 0, 0, 0, {RC_OK, Outcome::instance}, "uuid location1 flags"},
        {{{1, library}}, 1, 0, 0, 1, {RC_OK, Outcome::instance}, "uuid location1 flags"},
        {{{1, library}}, 0, 0, 77, 0, {RC_CANNOT_CREATE, Outcome::null}, "uuid location1 flags"},
        {{{1, library}}, 0, 0, 0, 2, {RC_CANNOT_CREATE, Outcome::null}, "uuid location1 flags"},
        {{{1, missing}, {5, u"x"}},
         0,
         0,
         0,
         0,
         {RC_CANNOT_CREATE, Outcome::null},
         "uuid location1 flags"},
        {{{1, wide(TARVO_TEST_NO_ENTRY_POINT)}},
         0,
         0,
         0,
         0,
         {RC_CANNOT_CREATE, Outcome::null},
         "uuid location1 flags"},
        {{{3, u"{}"}}, 0, 0, 77, 0, {77, Outcome::null}, "uuid location1 location3 flags"},
        {{{3, u"{}"}},
         1,
         0,
         0,
         3,
         {RC_CANNOT_CREATE, Outcome::null},
         "uuid location1 location3 flags"},
    };
    for (const auto& [locations, flags, uuidResult, flagsResult, componentFlags, outcome, asked] :
         cases) {
        Details details;
        details.locations = locations;
        details.uuidResult = uuidResult;
        details.flagsResult = flagsResult;
        details.flags = componentFlags;
        EXPECT_EQ(create(details, flags), outcome);
        const std::string gate = gateIsClosed() ? "allUsers1" : "";
        EXPECT_EQ(details.asked, gate + (gate.empty() || *asked == '\0' ? "" : " ") + asked);
    }
    Details details;
    EXPECT_EQ(TARVO::createInstance(details.pair, 2, nullptr), TarvoResult{RC_NULL_POINTER});
    EXPECT_EQ(details.asked, "");
}

TEST(Creation, RefusesAnElevatedProcessWhatAnyUserCouldHaveRegistered) {
    Details details;
    details.locations = {{1, builtModule("component.dll")}};
    details.allUsers = 0;
    const Outcome refused{RC_ELEVATION_REFUSED, Outcome::untouched};
    EXPECT_EQ(create(details), gateIsClosed() ? refused : Outcome(RC_OK, Outcome::instance));
    // The gate comes before a look at the flags.
    EXPECT_EQ(create(details, 2).result, gateIsClosed() ? TarvoResult{RC_ELEVATION_REFUSED}
                                                        : TarvoResult{RC_INVALID_ARGUMENT});
}

TEST(Creation, PassesOnWhatTheEntryPointGives) {
    Details details;
    details.locations = {{1, builtModule("component.dll")}};
    component().takeNotes();
    EXPECT_EQ(create(details).result, TarvoResult{RC_OK});
    EXPECT_EQ(component().takeNotes(), "create 42\ninstance released, 0\n");
    component().answerWith({.create = 4711});
    EXPECT_EQ(create(details), Outcome(4711, Outcome::null));
    component().answerWith({});
}

TEST(Creation, LoadsALibraryOnceHoweverItsPathIsSpelled) {
    const std::u16string here = besideProgram(u"OnceOnly.dll");
    const std::u16string away = besideProgram(u"elsewhere.dll");
    TARVO::platform::removeFile(away);
    ASSERT_TRUE(TARVO::platform::copyFileOver(builtModule("component.dll"), here));
    Details details;
    details.locations = {{1, here}};
    EXPECT_EQ(create(details).result, TarvoResult{RC_OK});
    // Only what is kept in memory can serve now.
    std::filesystem::rename(here, away);
    EXPECT_EQ(create(details).result, TarvoResult{RC_OK});
    details.locations = {{1, besideProgram(u"ONCEONLY.dll")}};
    EXPECT_EQ(create(details).result, TarvoResult{RC_OK});

    // A failure isn't kept.
    const std::u16string late = besideProgram(u"late.dll");
    TARVO::platform::removeFile(late);
    details.locations = {{1, late}};
    EXPECT_EQ(create(details).result, TarvoResult{RC_CANNOT_CREATE});
    ASSERT_TRUE(TARVO::platform::copyFileOver(builtModule("component.dll"), late));
    EXPECT_EQ(create(details).result, TarvoResult{RC_OK});
}

} // namespace
