// Formatted input of an identifier's text, written out: the standard libraries read it from 32-bit
// wide characters on one platform, and differ in small things.
#include "platform/hexadecimal.h"
#include "platform/text.h"

namespace TARVO::platform {
namespace {

// White space as Windows classifies it for wide formatted input.
bool isSpace(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == 0x00A0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

// Reads the number of one field of at most two characters and moves `at` behind it.
bool scanField(const char16_t*& at, std::uint8_t& byte) {
    while (isSpace(*at)) {
        ++at;
    }
    const bool hasSign = *at == u'+' || *at == u'-';
    const bool isNegative = *at == u'-';
    at += hasSign ? 1 : 0;

    const int first = hexadecimalValue(*at);
    if (first < 0) {
        return false;
    }
    ++at;
    int value = first;
    if (!hasSign) {
        const int second = hexadecimalValue(*at);
        const bool isPrefix = first == 0 && (*at == u'x' || *at == u'X');
        if (second >= 0) {
            value = first * 16 + second;
        }
        at += second >= 0 || isPrefix ? 1 : 0;
    }
    byte = static_cast<std::uint8_t>(isNegative ? -value : value);
    return true;
}

} // namespace

bool scanUUID(const char16_t* text, std::array<std::uint8_t, 16>& bytes) {
    if (*text++ != u'{') {
        return false;
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool dashBefore = i == 4 || i == 6 || i == 8 || i == 10;
        if (dashBefore && *text++ != u'-') {
            return false;
        }
        if (!scanField(text, bytes[i])) {
            return false;
        }
    }
    return true;
}

} // namespace TARVO::platform
