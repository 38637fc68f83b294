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

// One digit stands for a pair of digits of the text, in memory order.
constexpr std::u16string_view kLayout = u"{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
constexpr char16_t kDigits[] = u"0123456789abcdef";
constexpr unsigned kNoDigit = 16;

constexpr unsigned digitValue(char16_t unit) {
    if (unit >= u'0' && unit <= u'9')
        return static_cast<unsigned>(unit - u'0');
    if (unit >= u'a' && unit <= u'f')
        return static_cast<unsigned>(unit - u'a' + 10);
    if (unit >= u'A' && unit <= u'F')
        return static_cast<unsigned>(unit - u'A' + 10);
    return kNoDigit;
}

// Reads a text of the canonical layout, in either case, up to its last digit. False where the text
// departs from it; the text's terminator is such a place, so nothing behind it is read.
bool readCanonical(const char16_t* text, UUID& uuid) noexcept {
    unsigned digits = 0;
    for (std::size_t i = 0; i + 1 < kLayout.size(); ++i) {
        if (kLayout[i] != u'x') {
            if (text[i] != kLayout[i])
                return false;
            continue;
        }
        const unsigned value = digitValue(text[i]);
        if (value == kNoDigit)
            return false;
        std::uint8_t& byte = uuid.bytes[digits / 2];
        byte = static_cast<std::uint8_t>(digits % 2 == 0 ? value << 4 : byte | value);
        ++digits;
    }
    return true;
}

} // namespace

UUIDText::UUIDText(const UUID& uuid) noexcept : units_{} {
    unsigned digits = 0;
    for (std::size_t i = 0; i < kLayout.size(); ++i) {
        if (kLayout[i] != u'x') {
            units_[i] = kLayout[i];
            continue;
        }
        const unsigned byte = uuid.bytes[digits / 2];
        units_[i] = kDigits[digits % 2 == 0 ? byte >> 4 : byte & 15];
        ++digits;
    }
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
