// Identifiers of libraries and of what they define, one for each small number.
#pragma once

#include <tarvo/uuid.hpp>

#include <cstdint>

namespace tests {

constexpr tarvo::UUID idOf(int number) {
    tarvo::UUID id;
    id.bytes[0] = 0xAB;
    id.bytes[15] = static_cast<std::uint8_t>(number);
    return id;
}

} // namespace tests
