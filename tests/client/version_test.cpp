// How the texts of versions are read.
#include "client/version.h"

#include <gtest/gtest.h>

namespace {

using namespace TARVO;

TEST(InstalledVersion, IsReadAsFarAsItGoes) {
    const struct {
        std::u16string_view text;
        std::array<std::uint32_t, 4> version;
    } cases[] = {
        {u"1.2.1.2", {1, 2, 1, 2}}, {u"1.2", {1, 2, 0, 0}},       {u"", {0, 0, 0, 0}},
        {u"1..3", {1, 0, 3, 0}},    {u"1.2 beta", {1, 2, 0, 0}},  {u"x", {0, 0, 0, 0}},
        {u"-1.2", {0, 0, 0, 0}},    {u"1.2.3.4.5", {1, 2, 3, 4}}, {u".7", {0, 7, 0, 0}},
    };
    for (const auto& [text, version] : cases)
        EXPECT_EQ(parseInstalledVersion(text), version);
}

TEST(LibraryVersion, HasFourNumbersAndIsComparedByThree) {
    enum Verdict { invalid, tooOld, good };
    const struct {
        std::u16string_view text;
        Verdict verdict;
    } cases[] = {
        {u"1.2.1.0", good},    {u"1.2.1.99", good},     {u"1.2.0.9", tooOld},
        {u"1.10.0.0", good},   {u"1.1.99.0", tooOld},   {u"2.0.0.0", good},
        {u"0.9.9.9", tooOld},  {u"1...2..1.0", good},   {u"1.2.1", invalid},
        {u"1.2.1.", invalid},  {u"1.2.one.0", invalid}, {u"", invalid},
        {u"1.2.1.0.7", good},  {u" 1. 2.1x.0", good},   {u"1.99999999999.0.0", invalid},
        {u"1.2.1.x", invalid}, {u"-1.5.5.5", tooOld},   {u"\u0131.2.1.0", invalid},
    };
    for (const auto& [text, verdict] : cases) {
        const auto version = parseLibraryVersion(text);
        EXPECT_EQ(!version ? invalid : isNewEnough(*version) ? good : tooOld, verdict);
    }
}

} // namespace
