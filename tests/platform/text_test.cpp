#include "platform/text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace std::string_view_literals;

std::u16string utf16(std::string_view text) {
    std::u16string result;
    TARVO::platform::appendUtf16(text, result);
    return result;
}

std::string utf8(std::u16string_view text) {
    std::string result;
    TARVO::platform::appendUtf8(text, result);
    return result;
}

TEST(Text, ConvertsEveryCharacterThereAndBack) {
    std::u32string all;
    std::u16string wide;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c < 0xE000) {
            continue;
        }
        if (c < 0x10000) {
            wide += static_cast<char16_t>(c);
        } else {
            wide += static_cast<char16_t>(0xD7C0 + (c >> 10));
            wide += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
        }
    }
    const std::string narrow = utf8(wide);
    EXPECT_EQ(narrow.size(), 0x80 + 2 * 0x780 + 3 * (0xF800 - 0x800) + 4 * 0x100000);
    EXPECT_EQ(utf16(narrow), wide);
    EXPECT_EQ(utf8(u"\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"),
              "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF0\x90\x80\x80"
              "\xF4\x8F\xBF\xBF");
}

TEST(Text, IsAppended) {
    std::u16string wide = u"a";
    TARVO::platform::appendUtf16("", wide);
    TARVO::platform::appendUtf16("b\xC3\xBC", wide);
    TARVO::platform::appendUtf16("\0c"sv, wide);
    EXPECT_EQ(wide, u"ab\u00FC\0c"sv);
    std::string narrow = "a";
    TARVO::platform::appendUtf8(u"", narrow);
    TARVO::platform::appendUtf8(u"b\u00FC", narrow);
    TARVO::platform::appendUtf8(u"\0c"sv, narrow);
    EXPECT_EQ(narrow, "ab\xC3\xBC\0c"sv);
}

TEST(Text, TakesWhatIsNotAsciiAtAnyPlace) {
    constexpr std::size_t length = 50; // some blocks of the fast way, and a rest
    for (std::size_t place = 0; place < length; ++place) {
        SCOPED_TRACE(place);
        const std::u16string wide =
            std::u16string(place, u'x') + u"\u20AC" + std::u16string(length - place, u'y');
        const std::string narrow =
            std::string(place, 'x') + "\xE2\x82\xAC" + std::string(length - place, 'y');
        EXPECT_EQ(utf8(wide), narrow);
        EXPECT_EQ(utf16(narrow), wide);
    }
}

TEST(Text, ReplacesMalformedPieces) {
    struct Case {
        std::string_view bytes;
        std::u16string_view text;
    };
    const std::vector<Case> cases{
        {"\x80"
         "A"sv,
         u"\uFFFDA"},
        {"\xC0\x80"sv, u"\uFFFD\uFFFD"}, // never in use as a lead
        {"\xFF\xFE"sv, u"\uFFFD\uFFFD"}, //
        {"\xC3"sv, u"\uFFFD"},           // cut off
        {"\xE2\x82"sv, u"\uFFFD"},       //
        {"\xE2"
         "A"sv,
         u"\uFFFD"}, // cut off: what is left is one piece
        {"\xF0"
         "AB"sv,
         u"\uFFFD"}, //
        {"\xE2"
         "AB"sv,
         u"\uFFFDAB"}, // not cut off, but broken off
        {"\xE2\x82"
         "A"sv,
         u"\uFFFDA"}, //
        {"\xF0\x9F\x98\xF0\x9F\x98\x80"sv, u"\uFFFD\U0001F600"},
        {"\xE0\x80\x80"sv, u"\uFFFD\uFFFD"}, // overlong
        {"\xF0\x80\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80"sv, u"\uFFFD\uFFFD"},           // a surrogate
        {"\xF4\x90\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD"}, // beyond the last character
    };
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(utf16(bytes), text) << testing::PrintToString(bytes);
    }
    EXPECT_EQ(utf8(u"\xD800"
                   u"A\xDC00\xD83D\xD83D\xDE00\xDC00\xD83D"),
              "\xEF\xBF\xBD"
              "A\xEF\xBF\xBD\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD");
}

// FNV-1a
class Digest {
  public:
    template <typename Unit>
    void add(std::basic_string_view<Unit> text) {
        addNumber(text.size());
        for (const Unit unit : text) {
            addNumber(static_cast<std::make_unsigned_t<Unit>>(unit));
        }
    }
    std::uint64_t value() const { return value_; }

  private:
    void addNumber(std::uint64_t number) { value_ = (value_ ^ number) * 0x100000001B3; }

    std::uint64_t value_ = 0xCBF29CE484222325;
};

// Calls `visit` with all texts of up to `length` units of the alphabet.
template <typename Unit, typename Visit>
void forAllTexts(std::basic_string_view<Unit> alphabet, std::size_t length, Visit visit) {
    std::vector<std::basic_string<Unit>> texts{{}};
    for (std::size_t i = 0; i < length; ++i) {
        std::vector<std::basic_string<Unit>> longer;
        for (const auto& text : texts) {
            for (const Unit unit : alphabet) {
                longer.push_back(text + unit);
                visit(std::basic_string_view<Unit>{longer.back()});
            }
        }
        texts = std::move(longer);
    }
}

// One number stands for the results of all short texts of the units where some rule begins or ends.
// It was taken from the Windows build; the same number here is the same result for each of them.
TEST(Text, IsConvertedAlikeOnAllPlatforms) {
    Digest toWide;
    forAllTexts(
        "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFF"sv,
        4, [&](std::string_view text) {
            toWide.add<char16_t>(utf16(text));
            toWide.add<char16_t>(utf16(std::string{text} + "AAA"));
        });
    EXPECT_EQ(toWide.value(), 11421399143266481993u);

    Digest toNarrow;
    constexpr char16_t units[] = {0,      0x41,   0x7F,   0x80,   0x7FF,  0x800, 0xD7FF,
                                  0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFFFF};
    forAllTexts(std::u16string_view{units, std::size(units)}, 4,
                [&](std::u16string_view text) { toNarrow.add<char>(utf8(text)); });
    EXPECT_EQ(toNarrow.value(), 4923583598224990131u);
}

} // namespace
