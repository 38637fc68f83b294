// The digits of numbers that are written to the base of 16.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace TARVO::platform {

// By character; -1 for what is no digit.
inline constexpr auto kHexadecimalValues = [] {
    std::array<std::int8_t, u'f' + 1> values{};
    values.fill(-1);
    for (std::int8_t value = 0; value < 10; ++value)
        values[static_cast<std::size_t>(u'0' + value)] = value;
    for (std::int8_t value = 10; value < 16; ++value)
        values[static_cast<std::size_t>(u'A' + value - 10)] =
            values[static_cast<std::size_t>(u'a' + value - 10)] = value;
    return values;
}();

// -1 for what is no digit.
constexpr int hexadecimalValue(char16_t c) {
    return c < kHexadecimalValues.size() ? kHexadecimalValues[c] : -1;
}

} // namespace TARVO::platform
