// Which of two versions is the greater one.
#include "types/version_numbers.h"

#include <gtest/gtest.h>

namespace {

using namespace TARVO;

TEST(VersionNumbers, AreReadAsFarAsTheyGo) {
    const struct {
        std::u16string_view text;
        VersionNumbers numbers;
    } cases[] = {
        {u"1.2.3", {1, 2, 3}},
        {u"1.x", {1}},
        {u"x1", {}},
        {u"", {}},
        {u"1..2", {1}},
        {u"1.2 beta", {1, 2}},
        {u" 7.-1", {7, -1}},
        {u"1,2", {1}},
        {u"2147483647.2147483648", {2147483647}},
        {u"-2147483648", {-2147483648}},
        {u"99999999999999999999", {}},
        {u"1.", {1}},
    };
    for (const auto& [text, numbers] : cases)
        EXPECT_EQ(versionNumbers(text), numbers);
}

TEST(VersionNumbers, AreComparedFromTheFront) {
    const struct {
        std::u16string_view one;
        std::u16string_view other;
        bool oneIsGreater;
        bool otherIsGreater;
    } cases[] = {
        {u"1.10", u"1.9", true, false},     {u"2.0", u"1.5", true, false},
        {u"1.0", u"1.0.0", false, false},   {u"1.0", u"1.0.0.1", false, true},
        {u"1", u"", true, false},           {u"0", u"", false, false},
        {u"1.2.3", u"1.2.3", false, false},
    };
    for (const auto& [one, other, oneIsGreater, otherIsGreater] : cases) {
        EXPECT_EQ(isGreaterVersion(versionNumbers(one), versionNumbers(other)), oneIsGreater);
        EXPECT_EQ(isGreaterVersion(versionNumbers(other), versionNumbers(one)), otherIsGreater);
    }
}

} // namespace
