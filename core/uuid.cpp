#include "core/uuid.h"

#include "core/slot.h"
#include "platform/identifier.h"
#include "platform/text.h"
#include "tarvo/text.hpp"
#include "tarvo/uuid.h"

#include <cstring>
#include <system_error>

namespace TARVO {

UUID newUUID() {
    const std::array<std::uint8_t, 16> bytes = platform::newIdentifier();
    UUID uuid;
    std::memcpy(uuid.bytes, bytes.data(), sizeof uuid.bytes);
    return uuid;
}

bool isUUIDText(std::u16string_view text) noexcept {
    const auto uuid = tarvo::UUID::parse(text);
    return uuid && UUIDText(*uuid).view() == text;
}

} // namespace TARVO

TarvoUUID vaskGenUUID(void) {
    try {
        return TARVO::newUUID();
    } catch (const std::system_error&) {
        return {}; // no exception passes the boundary, and the call has no other way to fail
    }
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
        if (const auto canonical = tarvo::UUID::parse(text)) {
            *uuid = *canonical;
            return RC_OK;
        }
        std::array<std::uint8_t, 16> bytes{};
        const bool read = TARVO::platform::scanUUID(text, bytes);
        if (!read)
            bytes = {};
        std::memcpy(uuid->bytes, bytes.data(), sizeof uuid->bytes);
        return read ? RC_OK : RC_INVALID_ARGUMENT;
    });
}
