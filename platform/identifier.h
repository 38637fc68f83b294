// New identifiers from the system's generator.
#pragma once

#include <array>
#include <cstdint>

namespace platform {

// A new RFC 4122 identifier, its bytes in the order in which its text prints them.
std::array<std::uint8_t, 16> newIdentifier();

} // namespace platform
