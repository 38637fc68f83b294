// A marshal library that lacks one of its names, though none that would be called, isn't used.
#include "tests/instantiation/creation_fixture.h"

namespace {

using namespace tests;

TEST(AMarshalLibrary, IsNotUsedIfANameIsMissing) {
    const std::u16string place = besideProgram(u"TARVOMarshal.dll");
    ASSERT_TRUE(TARVO::platform::copyFileOver(builtModule("incomplete.dll"), place));
    Details details;
    details.locations = {{0, u"32.dll"}};
    EXPECT_EQ(create(details), Outcome(RC_UNSPECIFIED, Outcome::null));
    // The text of a remote location is looked at first.
    details.locations = {{4, u"tarvo://host"}};
    EXPECT_EQ(create(details), Outcome(RC_BAD_LOCATION, Outcome::null));
    details.locations = {{4, u"tarvo://host:1"}};
    EXPECT_EQ(create(details), Outcome(RC_UNSPECIFIED, Outcome::null));
    EXPECT_EQ(Module(place).takeNotes(), "");
}

} // namespace
