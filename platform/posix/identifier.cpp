#include "platform/identifier.h"

#include <cerrno>
#include <sys/random.h>
#include <system_error>

namespace platform {

std::array<std::uint8_t, 16> newIdentifier() {
    std::array<std::uint8_t, 16> bytes;
    if (getentropy(bytes.data(), bytes.size()) != 0) {
        // There is no honest identifier without randomness.
        throw std::system_error(errno, std::generic_category(), "no random numbers to be had");
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4: random
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // the RFC's variant
    return bytes;
}

} // namespace platform
