#include "platform/identifier.h"

#include <gtest/gtest.h>
#include <set>

namespace {

TEST(Identifier, IsNewAndOfTheRandomKind) {
    constexpr std::size_t count = 1000;
    std::set<std::array<std::uint8_t, 16>> seen;
    for (std::size_t i = 0; i < count; ++i) {
        const auto bytes = platform::newIdentifier();
        // Where the text shows version and variant, so these also tell the order of the bytes.
        EXPECT_EQ(bytes[6] >> 4, 4);
        EXPECT_EQ(bytes[8] >> 6, 2);
        seen.insert(bytes);
    }
    EXPECT_EQ(seen.size(), count);
}

} // namespace
