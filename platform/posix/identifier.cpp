#include "platform/identifier.h"

#include "platform/hexadecimal.h"

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <sys/random.h>
#include <system_error>

namespace TARVO::platform {
namespace {

constexpr std::u16string_view kClassDigits = u"0123456789ABCDEF";

// Whether the text has a hyphen before a byte's two digits.
constexpr bool beginsGroup(std::size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

} // namespace

IdentifierBytes newIdentifier() {
    IdentifierBytes bytes;
    if (getentropy(bytes.data(), bytes.size()) != 0) {
        // There is no honest identifier without randomness.
        throw std::system_error(errno, std::generic_category(), "no random numbers to be had");
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4: random
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // the RFC's variant
    return bytes;
}

// Reads no further than to the first character that is not as it must be.
std::optional<IdentifierBytes> classIdentifier(const char16_t* text) {
    IdentifierBytes bytes;
    if (*text++ != u'{') {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (beginsGroup(i) && *text++ != u'-') {
            return std::nullopt;
        }
        const int high = hexadecimalValue(*text++);
        if (high < 0) {
            return std::nullopt;
        }
        const int low = hexadecimalValue(*text++);
        if (low < 0) {
            return std::nullopt;
        }
        bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return text[0] == u'}' && text[1] == u'\0' ? std::optional{bytes} : std::nullopt;
}

ClassText classText(const IdentifierBytes& bytes) {
    ClassText text;
    auto next = text.begin();
    *next++ = u'{';
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (beginsGroup(i)) {
            *next++ = u'-';
        }
        *next++ = kClassDigits[bytes[i] >> 4];
        *next++ = kClassDigits[bytes[i] & 15];
    }
    *next++ = u'}';
    *next = u'\0';
    return text;
}

} // namespace TARVO::platform
