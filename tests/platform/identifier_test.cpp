#include "platform/identifier.h"

#include <gtest/gtest.h>
#include <set>
#include <string_view>

namespace {

TEST(Identifier, IsNewAndOfTheRandomKind) {
    constexpr std::size_t count = 1000;
    std::set<std::array<std::uint8_t, 16>> seen;
    for (std::size_t i = 0; i < count; ++i) {
        const auto bytes = TARVO::platform::newIdentifier();
        // Where the text shows version and variant, so these also tell the order of the bytes.
        EXPECT_EQ(bytes[6] >> 4, 4);
        EXPECT_EQ(bytes[8] >> 6, 2);
        seen.insert(bytes);
    }
    EXPECT_EQ(seen.size(), count);
}

TEST(Identifier, OfAClassIsReadInItsStrictForm) {
    constexpr TARVO::platform::IdentifierBytes bytes{0x00, 0x11, 0x22, 0x33, 0x44, 0x55,
                                                     0x66, 0x77, 0x88, 0x99, 0xAA, 0xBB,
                                                     0xCC, 0xDD, 0xEE, 0xFF};
    constexpr auto* text = u"{00112233-4455-6677-8899-AABBCCDDEEFF}";
    EXPECT_EQ(TARVO::platform::classText(bytes).data(), std::u16string_view{text});
    for (const auto* good : {text, u"{00112233-4455-6677-8899-aabbCCDDeeff}"}) {
        EXPECT_EQ(TARVO::platform::classIdentifier(good), bytes);
    }
    for (const auto* bad :
         {u"", u"{", u"{00112233-4455-6677-8899-AABBCCDDEEFF",
          u"{00112233-4455-6677-8899-AABBCCDDEEFF}x", u" {00112233-4455-6677-8899-AABBCCDDEEFF}",
          u"00112233-4455-6677-8899-AABBCCDDEEFF", u"{00112233445566778899AABBCCDDEEFF}",
          u"{00112233-4455-6677-8899-AABBCCDDEEFG}", u"{00112233-4455-6677-8899-AABBCCDDEEF\uFF26}",
          u"(00112233-4455-6677-8899-AABBCCDDEEFF)", u"{00112233_4455-6677-8899-AABBCCDDEEFF}",
          u"{0x112233-4455-6677-8899-AABBCCDDEEFF}"}) {
        EXPECT_EQ(TARVO::platform::classIdentifier(bad), std::nullopt)
            << testing::PrintToString(std::u16string_view{bad});
    }
}

} // namespace
