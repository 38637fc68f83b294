#include "platform/identifier.h"

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <sys/random.h>
#include <system_error>

namespace platform {
namespace {

constexpr std::u16string_view kDigits = u"0123456789ABCDEF";

// '0' stands for a digit.
constexpr std::u16string_view kForm = u"{00000000-0000-0000-0000-000000000000}";

int digitValue(char16_t c) {
    const bool isLower = c >= u'a' && c <= u'f';
    const auto digit = static_cast<char16_t>(isLower ? c - u'a' + u'A' : c);
    const std::size_t value = kDigits.find(digit);
    return value == kDigits.npos ? -1 : static_cast<int>(value);
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

std::optional<IdentifierBytes> classIdentifier(const char16_t* text) {
    IdentifierBytes bytes{};
    std::size_t digits = 0;
    for (const char16_t expected : kForm) {
        const char16_t c = *text++;
        if (expected != u'0') {
            if (c != expected) {
                return std::nullopt;
            }
            continue;
        }
        const int value = digitValue(c);
        if (value < 0) {
            return std::nullopt;
        }
        std::uint8_t& byte = bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
    }
    return *text == u'\0' ? std::optional{bytes} : std::nullopt;
}

ClassText classText(const IdentifierBytes& bytes) {
    ClassText text{};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        if (kForm[i] != u'0') {
            text[i] = kForm[i];
            continue;
        }
        const std::uint8_t byte = bytes[digits / 2];
        text[i] = kDigits[digits % 2 == 0 ? byte >> 4 : byte & 15];
        ++digits;
    }
    return text;
}

} // namespace platform
