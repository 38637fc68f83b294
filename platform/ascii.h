// The part of a text conversion that is alike on every platform, and nearly all of the work: a run
// of ASCII is copied sixteen characters at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>

namespace platform {

inline constexpr std::size_t kAsciiBlock = 16;

template <typename Unit>
bool isAsciiBlock(const Unit* block) {
    using Number = std::make_unsigned_t<Unit>;
    constexpr std::uint64_t ones = ~std::uint64_t{0} / std::numeric_limits<Number>::max();
    constexpr std::uint64_t beyondAscii = ones * (std::numeric_limits<Number>::max() ^ 0x7Fu);
    std::array<std::uint64_t, kAsciiBlock * sizeof(Unit) / sizeof(std::uint64_t)> words;
    std::memcpy(words.data(), block, sizeof words);
    std::uint64_t bits = 0;
    for (const std::uint64_t word : words) {
        bits |= word;
    }
    return (bits & beyondAscii) == 0;
}

// Copies the ASCII characters that `text` begins with to `target` and gives their number.
template <typename From, typename To>
std::size_t copyAsciiFront(std::basic_string_view<From> text, To* target) {
    std::size_t done = 0;
    while (text.size() - done >= kAsciiBlock && isAsciiBlock(text.data() + done)) {
        for (std::size_t i = 0; i < kAsciiBlock; ++i) {
            target[done + i] = static_cast<To>(text[done + i]);
        }
        done += kAsciiBlock;
    }
    while (done < text.size() && static_cast<std::make_unsigned_t<From>>(text[done]) < 0x80) {
        target[done] = static_cast<To>(text[done]);
        ++done;
    }
    return done;
}

} // namespace platform
