// The library speaks UTF-16, the tool's users UTF-8.
#pragma once

#include "platform/text.h"

#include <string>
#include <string_view>

namespace tool {

inline std::string toUtf8(std::u16string_view text) {
    std::string utf8;
    platform::appendUtf8(text, utf8);
    return utf8;
}

inline std::u16string toUtf16(std::string_view utf8) {
    std::u16string text;
    platform::appendUtf16(utf8, text);
    return text;
}

} // namespace tool
