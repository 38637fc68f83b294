// The hash of names in tables. It differs from process to process, so that no input can be made
// whose names all fall into one place of a table.
#pragma once

#include "platform/identifier.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <system_error>

namespace TARVO {

// Texts are worked on four units at a time, one in each 16-bit lane of a word.
constexpr std::size_t kLanes = 4;

constexpr std::uint64_t keepLanes(std::uint64_t lanes) {
    return lanes;
}

inline std::uint64_t loadLanes(const char16_t* units) noexcept {
    std::uint64_t lanes = 0;
    std::memcpy(&lanes, units, sizeof lanes);
    return lanes;
}

// Up to three units in lanes of their own.
inline std::uint64_t loadFewLanes(const char16_t* units, std::size_t count) noexcept {
    std::uint64_t lanes = 0;
    for (std::size_t i = 0; i < count; ++i)
        lanes |= std::uint64_t{units[i]} << (16 * i);
    return lanes;
}

namespace detail {

// Multiplies to the full width and folds the halves together, so that every bit of both factors
// reaches every bit of the result.
inline std::uint64_t mix(std::uint64_t left, std::uint64_t right) noexcept {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(left) * right;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

struct HashSeed {
    HashSeed() noexcept {
        try {
            const auto bytes = platform::newIdentifier();
            std::memcpy(words, bytes.data(), sizeof words);
        } catch (const std::system_error&) {
            // Without random numbers, where the loader put things is the best that there is.
            words[0] = reinterpret_cast<std::uintptr_t>(this) * 0x9e3779b97f4a7c15;
            words[1] = reinterpret_cast<std::uintptr_t>(&words[0]) ^ words[0] >> 32;
        }
        words[1] |= 1;
    }
    std::uint64_t words[2];
};

inline const HashSeed& hashSeed() noexcept {
    static const HashSeed seed;
    return seed;
}

} // namespace detail

// `Fold` is applied to each word of the text. What is left over at the end of a longer text is
// taken as whole words that overlap those before.
template <std::uint64_t (*Fold)(std::uint64_t) = keepLanes>
std::uint64_t hashOfText(std::u16string_view text) noexcept {
    const detail::HashSeed& seed = detail::hashSeed();
    constexpr std::uint64_t kFirst = 0x9e3779b97f4a7c15;
    constexpr std::uint64_t kSecond = 0xd1b54a32d192ed03;

    std::uint64_t state = seed.words[0] ^ text.size();
    const auto mixIn = [&](std::uint64_t left, std::uint64_t right) {
        state = detail::mix(state ^ kFirst ^ Fold(left), seed.words[1] ^ Fold(right));
    };
    const char16_t* units = text.data();
    const char16_t* const end = units + text.size();
    if (text.size() < kLanes) {
        mixIn(loadFewLanes(units, text.size()), 0);
    } else {
        for (; end - units > static_cast<std::ptrdiff_t>(2 * kLanes); units += 2 * kLanes)
            mixIn(loadLanes(units), loadLanes(units + kLanes));
        const bool isLong = text.size() >= 2 * kLanes;
        mixIn(loadLanes(isLong ? end - 2 * kLanes : units), loadLanes(end - kLanes));
    }
    return detail::mix(state, kSecond);
}

} // namespace TARVO
