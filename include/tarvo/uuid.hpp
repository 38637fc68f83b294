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
        std::size_t next = 0;
        units[next++] = u'{';
        for (std::size_t i = 0; i < sizeof bytes; ++i) {
            if (beginsGroup(i))
                units[next++] = u'-';
            units[next++] = kDigits[bytes[i] >> 4];
            units[next++] = kDigits[bytes[i] & 15];
        }
        units[next] = u'}';
        return units;
    }
    std::u16string string() const { return std::u16string(text().data(), kTextLength); }

    // Reads a whole text of that layout, in either case. What vaskUUIDFromString accepts beyond it
    // is nothing here.
    static constexpr std::optional<UUID> parse(std::u16string_view text) noexcept {
        if (text.size() != kTextLength || text.front() != u'{' || text.back() != u'}')
            return std::nullopt;
        UUID uuid;
        std::size_t next = 1;
        for (std::size_t i = 0; i < sizeof uuid.bytes; ++i) {
            if (beginsGroup(i) && text[next++] != u'-')
                return std::nullopt;
            const std::uint8_t high = digitValue(text[next++]);
            const std::uint8_t low = digitValue(text[next++]);
            if (high == kNoDigit || low == kNoDigit)
                return std::nullopt;
            uuid.bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
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
    static constexpr std::u16string_view kDigits = u"0123456789abcdef";
    static constexpr std::uint8_t kNoDigit = 16;

    // Whether the text has a hyphen before a byte's two digits.
    static constexpr bool beginsGroup(std::size_t byte) noexcept {
        return byte == 4 || byte == 6 || byte == 8 || byte == 10;
    }

    static constexpr auto kDigitValues = [] {
        std::array<std::uint8_t, u'f' + 1> values{};
        values.fill(kNoDigit);
        for (std::size_t value = 0; value < kDigits.size(); ++value)
            values[kDigits[value]] = static_cast<std::uint8_t>(value);
        for (std::size_t capital = u'A'; capital <= u'F'; ++capital)
            values[capital] = values[capital + (u'a' - u'A')];
        return values;
    }();

    static constexpr std::uint8_t digitValue(char16_t unit) noexcept {
        return unit < kDigitValues.size() ? kDigitValues[unit] : kNoDigit;
    }
};

static_assert(sizeof(UUID) == sizeof(TarvoUUID));

} // namespace tarvo

template <>
struct std::hash<tarvo::UUID> {
    // Identifiers are well spread already; joining their halves is enough.
    std::size_t operator()(const tarvo::UUID& uuid) const noexcept {
        const auto [low, high] = std::bit_cast<std::array<std::uint64_t, 2>>(uuid);
        return low ^ ((low << 6) + high + (low >> 2) + 0x9e3779b9);
    }
};
