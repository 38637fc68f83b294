// The library speaks UTF-16, the tool's users UTF-8, and their terminals have so many columns.
#pragma once

#include "platform/text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

inline std::string toUtf8(std::u16string_view text) {
    std::string utf8;
    TARVO::platform::appendUtf8(text, utf8);
    return utf8;
}

inline std::u16string toUtf16(std::string_view utf8) {
    std::u16string text;
    TARVO::platform::appendUtf16(utf8, text);
    return text;
}

// A place in a text of several lines: both count from 1, columns in bytes.
struct TextPlace {
    std::size_t line = 1;
    std::size_t column = 1;
};
TextPlace placeOf(std::string_view text, std::size_t offset);

// With the letters A to Z in lower case.
std::string lowered(std::string text);

// What the system says, without the line's end that some systems' texts have.
std::string systemText(std::u16string_view text);

// Shows control characters as the symbols that stand for them, so that no text can drive the
// terminal or look like several lines.
std::string printable(std::string_view text);

// The first part of a text that fits into so many columns of the terminal, with an ellipsis where
// something is left out.
std::string fitted(std::string_view text, std::size_t columns);

} // namespace tool
