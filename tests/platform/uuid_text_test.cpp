// Texts of identifiers, read as every caller reads them: the canonical form has a way of its own,
// and all others are scanned.
#include "tarvo/result.h"
#include "tarvo/uuid.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>

namespace {

using Bytes = std::array<std::uint8_t, 16>;

// Nothing if the text is refused, which must leave no identifier behind.
std::optional<Bytes> read(const std::u16string& text) {
    TarvoUUID uuid{{0xEE}};
    const TarvoResult result = vaskUUIDFromString(text.c_str(), &uuid);
    const Bytes bytes = std::to_array(uuid.bytes);
    if (result == RC_OK)
        return bytes;
    EXPECT_EQ(result, RC_INVALID_ARGUMENT);
    EXPECT_EQ(bytes, Bytes{});
    return std::nullopt;
}

// What the standard library makes of the same text. It is asked for narrow text, since its wide
// characters are not ours; for ASCII that is the same.
std::optional<Bytes> scanByLibrary(const std::u16string& text) {
    const std::string narrow{text.begin(), text.end()};
    std::array<unsigned, 16> n{};
    const int count = std::sscanf(
        narrow.c_str(), "{%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x}",
        &n[0], &n[1], &n[2], &n[3], &n[4], &n[5], &n[6], &n[7], &n[8], &n[9], &n[10], &n[11],
        &n[12], &n[13], &n[14], &n[15]);
    if (count != 16) {
        return std::nullopt;
    }
    Bytes bytes{};
    std::copy(n.begin(), n.end(), bytes.begin());
    return bytes;
}

constexpr std::u16string_view kCanonical = u"{00112233-4455-6677-8899-aabbccddeeff}";
constexpr Bytes kCanonicalBytes{0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,
                                0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};

TEST(UUIDText, IsReadToItsLastField) {
    for (const auto* text :
         {u"{00112233-4455-6677-8899-aabbccddeeff}", u"{00112233-4455-6677-8899-AABBCCDDEEFF}",
          u"{00112233-4455-6677-8899-aabbccddeeff", u"{00112233-4455-6677-8899-aabbccddeeff...",
          u"{0 1122 33- 4455-6677-8899-aabbccddeeff}",
          u"{\u00A0 00112233-4455-6677-8899-\u3000aabbccddeeff}",
          u"{\u200A\u205F00112233-4455-6677-8899-aabbccddee\u00A0ff}"}) {
        EXPECT_EQ(read(text), kCanonicalBytes) << testing::PrintToString(std::u16string_view{text});
    }
    for (const auto* text :
         {u"", u"{", u"00112233-4455-6677-8899-aabbccddeeff",
          u" {00112233-4455-6677-8899-aabbccddeeff}", u"{00112233-4455-6677-8899-aabbccddee",
          u"{00112233-4455-6677-8899-aabbccddee ", u"{0011223-34455-6677-8899-aabbccddeeff}",
          u"{00112233445566778899aabbccddeeff}", u"{00112233 -4455-6677-8899-aabbccddeeff}",
          u"{00112233-4455-6677-8899-aabbccddee\uFF11}",
          u"{00112233-4455-6677-8899-aabbccddee\uFFFF"
          u"ff}"}) {
        EXPECT_EQ(read(text), std::nullopt) << testing::PrintToString(std::u16string_view{text});
    }
}

// Texts made by small damage to a good one, so that many of them still are good.
TEST(UUIDText, IsReadAsTheStandardLibraryReadsIt) {
    constexpr std::u16string_view pieces[] = {u"0",  u"f", u"F", u"7",  u"x",  u"X",
                                              u"g",  u"-", u"+", u" ",  u"\t", u"\n",
                                              u"\v", u"{", u"}", u"0x", u"+f", u"- "};
    std::mt19937 random{20240229};
    const auto upTo = [&](std::size_t end) {
        return std::uniform_int_distribution<std::size_t>{0, end}(random);
    };
    std::size_t good = 0;
    constexpr std::size_t count = 50'000;
    for (std::size_t i = 0; i < count; ++i) {
        std::u16string text{kCanonical};
        for (std::size_t damages = upTo(3); damages > 0; --damages) {
            text.replace(upTo(text.size()), upTo(2), pieces[upTo(std::size(pieces) - 1)]);
        }
        const auto result = read(text);
        ASSERT_EQ(result, scanByLibrary(text)) << testing::PrintToString(text);
        good += result ? 1 : 0;
    }
    EXPECT_GT(good, count / 10);
    EXPECT_LT(good, count - count / 10);
}

} // namespace
