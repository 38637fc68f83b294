// Identifiers as values of C++: compared, hashed, printed and read at compile time or later.
#pragma once

#include "base.h"

#include <array>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tarvo {

// It is a TarvoUUID and can be passed as one wherever an address of that is wanted.
//
//     constexpr auto id = tarvo::UUID::parse(u"{3b78cdeb-7fe8-4542-b58b-26205774d82a}").value();
struct UUID : TarvoUUID {
    static constexpr std::size_t kTextLength = 38;

    constexpr UUID() noexcept : TarvoUUID{} {}
    constexpr UUID(const TarvoUUID& other) noexcept : TarvoUUID(other) {}

    constexpr bool isNil() const noexcept { return *this == UUID(); }

    // The text as the library prints it, in lower case with braces, and a terminator.
    constexpr std::array<char16_t, kTextLength + 1> text() const noexcept {
        std::array<char16_t, kTextLength + 1> units{};
        std::size_t digits = 0;
        for (std::size_t i = 0; i < kTextLength; ++i) {
            if (kLayout[i] != u'x') {
                units[i] = kLayout[i];
                continue;
            }
            const unsigned pair = bytes[digits / 2];
            units[i] = u"0123456789abcdef"[digits % 2 == 0 ? pair >> 4 : pair & 15];
            ++digits;
        }
        return units;
    }
    std::u16string string() const { return std::u16string(text().data(), kTextLength); }

    // Reads a whole text of that layout, in either case. What vaskUUIDFromString accepts beyond it
    // is nothing here.
    static constexpr std::optional<UUID> parse(std::u16string_view text) noexcept {
        UUID uuid;
        if (text.size() != kTextLength)
            return std::nullopt;
        std::size_t digits = 0;
        int high = 0;
        for (std::size_t i = 0; i < kTextLength; ++i) {
            const int digit = digitValue(text[i]);
            if (kLayout[i] == u'x' ? digit < 0 : text[i] != kLayout[i])
                return std::nullopt;
            if (kLayout[i] != u'x')
                continue;
            if (digits % 2 == 0)
                high = digit;
            else
                uuid.bytes[digits / 2] = static_cast<std::uint8_t>(high * 16 + digit);
            ++digits;
        }
        return uuid;
    }

    // By the bytes in memory order, as the library orders them.
    friend constexpr bool operator==(const UUID& left, const UUID& right) noexcept {
        using Halves = std::array<std::uint64_t, 2>;
        return std::bit_cast<Halves>(left) == std::bit_cast<Halves>(right);
    }
    friend constexpr std::strong_ordering operator<=>(const UUID& left,
                                                      const UUID& right) noexcept {
        for (std::size_t i = 0; i < sizeof left.bytes; ++i)
            if (left.bytes[i] != right.bytes[i])
                return left.bytes[i] <=> right.bytes[i];
        return std::strong_ordering::equal;
    }

  private:
    static constexpr std::u16string_view kLayout = u"{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";

    static constexpr int digitValue(char16_t unit) noexcept {
        if (unit >= u'0' && unit <= u'9')
            return unit - u'0';
        if (unit >= u'a' && unit <= u'f')
            return unit - u'a' + 10;
        if (unit >= u'A' && unit <= u'F')
            return unit - u'A' + 10;
        return -1;
    }
};

static_assert(sizeof(UUID) == sizeof(TarvoUUID));

} // namespace tarvo

template <>
struct std::hash<tarvo::UUID> {
    std::size_t operator()(const tarvo::UUID& uuid) const noexcept {
        std::uint64_t state = 0xcbf29ce484222325; // FNV-1a
        for (const std::uint8_t byte : uuid.bytes)
            state = (state ^ byte) * 0x100000001b3;
        return static_cast<std::size_t>(state);
    }
};
