#include "platform/identifier.h"

#include <algorithm>
#include <bit>
#include <objbase.h>

namespace platform {

std::array<std::uint8_t, 16> newIdentifier() {
    GUID guid{};
    CoCreateGuid(&guid);
    auto bytes = std::bit_cast<std::array<std::uint8_t, 16>>(guid);
    // The first three fields are numbers in the machine's order; the text prints them from the top.
    std::reverse(bytes.begin(), bytes.begin() + 4);
    std::reverse(bytes.begin() + 4, bytes.begin() + 6);
    std::reverse(bytes.begin() + 6, bytes.begin() + 8);
    return bytes;
}

} // namespace platform
