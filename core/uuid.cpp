#include "core/uuid.h"

#include "core/slot.h"
#include "platform/identifier.h"
#include "platform/text.h"
#include "tarvo/text.hpp"
#include "tarvo/uuid.h"

#include <algorithm>
#include <cstring>

namespace TARVO {

namespace {

constexpr std::u16string_view kLayout = u"{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
constexpr std::u16string_view kDigits = u"0123456789abcdef";

// Whether the text has a hyphen before a byte's two digits.
constexpr bool beginsGroup(std::size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

constexpr std::uint8_t kNoDigit = 16;

constexpr auto kDigitValues = [] {
    std::array<std::uint8_t, u'f' + 1> values;
    values.fill(kNoDigit);
    for (std::size_t value = 0; value < kDigits.size(); ++value)
        values[kDigits[value]] = static_cast<std::uint8_t>(value);
    for (std::size_t capital = u'A'; capital <= u'F'; ++capital)
        values[capital] = values[capital + (u'a' - u'A')];
    return values;
}();

constexpr std::uint8_t digitValue(char16_t unit) {
    return unit < kDigitValues.size() ? kDigitValues[unit] : kNoDigit;
}

// Reads a text of the canonical layout, in either case, up to its last digit. False where the text
// departs from it; the text's terminator is such a place, so nothing behind it is read.
bool readCanonical(const char16_t* text, UUID& uuid) noexcept {
    if (*text++ != u'{')
        return false;
    for (std::size_t i = 0; i < sizeof uuid.bytes; ++i) {
        if (beginsGroup(i) && *text++ != u'-')
            return false;
        const std::uint8_t high = digitValue(*text++);
        if (high == kNoDigit)
            return false;
        const std::uint8_t low = digitValue(*text++);
        if (low == kNoDigit)
            return false;
        uuid.bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return true;
}

} // namespace

UUIDText::UUIDText(const UUID& uuid) noexcept {
    char16_t* next = units_.data();
    *next++ = u'{';
    for (std::size_t i = 0; i < sizeof uuid.bytes; ++i) {
        if (beginsGroup(i))
            *next++ = u'-';
        *next++ = kDigits[uuid.bytes[i] >> 4];
        *next++ = kDigits[uuid.bytes[i] & 15];
    }
    *next++ = u'}';
    *next = u'\0';
}

UUID newUUID() {
    const std::array<std::uint8_t, 16> bytes = platform::newIdentifier();
    UUID uuid;
    std::memcpy(uuid.bytes, bytes.data(), sizeof uuid.bytes);
    return uuid;
}

bool isUUIDText(std::u16string_view text) noexcept {
    return std::ranges::equal(text, kLayout, [](char16_t unit, char16_t expected) {
        const bool digit = (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f');
        return expected == u'x' ? digit : unit == expected;
    });
}

} // namespace TARVO

TarvoUUID vaskGenUUID(void) {
    return TARVO::newUUID();
}

TarvoResult vaskStringFromUUID(const TarvoUUID* uuid, IVaskString* text) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (uuid == nullptr || text == nullptr)
            return RC_NULL_POINTER;
        const TARVO::UUIDText printed(*uuid);
        return text->table->set(text->me, printed.terminated(), TARVO::kUUIDTextLength);
    });
}

TarvoResult vaskUUIDFromString(const char16_t* text, TarvoUUID* uuid) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (uuid == nullptr)
            return RC_NULL_POINTER;
        *uuid = {};
        if (text == nullptr)
            return RC_NULL_POINTER;
        if (TARVO::readCanonical(text, *uuid))
            return RC_OK;
        std::array<std::uint8_t, 16> bytes{};
        const bool read = platform::scanUUID(text, bytes);
        if (!read)
            bytes = {};
        std::memcpy(uuid->bytes, bytes.data(), sizeof uuid->bytes);
        return read ? RC_OK : RC_INVALID_ARGUMENT;
    });
}
