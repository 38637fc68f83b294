// The part of a text conversion that is alike on every platform, and nearly all of the work: a run
// of ASCII is copied sixteen characters at a time, with instructions that every 64-bit x86 has.
#pragma once

#include <cstddef>
#include <emmintrin.h>
#include <string_view>
#include <type_traits>

namespace TARVO::platform {

inline constexpr std::size_t kAsciiBlock = 16;

// Copies kAsciiBlock characters if all of them are ASCII; otherwise copies nothing and gives false.
inline bool copyAsciiBlock(const char* text, char16_t* target) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    if (_mm_movemask_epi8(bytes) != 0) {
        return false;
    }
    const __m128i zero = _mm_setzero_si128();
    auto* const units = reinterpret_cast<__m128i*>(target);
    _mm_storeu_si128(units, _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(units + 1, _mm_unpackhi_epi8(bytes, zero));
    return true;
}

inline bool copyAsciiBlock(const char16_t* text, char* target) {
    const auto* const units = reinterpret_cast<const __m128i*>(text);
    const __m128i low = _mm_loadu_si128(units);
    const __m128i high = _mm_loadu_si128(units + 1);
    const __m128i beyondAscii = _mm_and_si128(_mm_or_si128(low, high), _mm_set1_epi16(~0x7F));
    constexpr int allEqual = 0xFFFF;
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyondAscii, _mm_setzero_si128())) != allEqual) {
        return false;
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm_packus_epi16(low, high));
    return true;
}

// Copies the ASCII characters that `text` begins with to `target` and gives their number.
template <typename From, typename To>
std::size_t copyAsciiFront(std::basic_string_view<From> text, To* target) {
    std::size_t done = 0;
    while (text.size() - done >= kAsciiBlock && copyAsciiBlock(text.data() + done, target + done)) {
        done += kAsciiBlock;
    }
    while (done < text.size() && static_cast<std::make_unsigned_t<From>>(text[done]) < 0x80) {
        target[done] = static_cast<To>(text[done]);
        ++done;
    }
    return done;
}

} // namespace TARVO::platform
