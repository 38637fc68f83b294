// Texts of the library as the tests' programs print, compare and write them.
#pragma once

#include "platform/text.h"

#include <string>
#include <string_view>

namespace tests {

inline std::u16string wide(std::string_view text) {
    std::u16string result;
    TARVO::platform::appendUtf16(text, result);
    return result;
}

inline std::string narrow(std::u16string_view text) {
    std::string result;
    TARVO::platform::appendUtf8(text, result);
    return result;
}

} // namespace tests
