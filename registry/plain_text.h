// Texts whose bytes are characters by themselves, as nearly all texts of a registry file are,
// turned into UTF-16 sixteen bytes at a time, as every processor of the platform can.
#pragma once

#include <bit>
#include <cstddef>
#include <emmintrin.h>
#include <string_view>

namespace TARVO {

using ByteBlock = __m128i;
constexpr std::size_t kBlock = sizeof(ByteBlock);

inline ByteBlock loadBlock(const char* from) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const ByteBlock*>(from));
}

// Marks on the bytes of a block. Bytes beyond ASCII are negative.
inline ByteBlock whereEqual(ByteBlock bytes, char byte) noexcept {
    return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte));
}
inline ByteBlock whereBelow(ByteBlock bytes, char bound) noexcept {
    return _mm_cmplt_epi8(bytes, _mm_set1_epi8(bound));
}
inline ByteBlock whereEither(ByteBlock left, ByteBlock right) noexcept {
    return _mm_or_si128(left, right);
}

// A bit for each byte that is marked, the first byte's lowest.
inline unsigned bitsOf(ByteBlock marks) noexcept {
    return static_cast<unsigned>(_mm_movemask_epi8(marks));
}

// What isn't plain in a text: all beyond ASCII, the null character that ends it, the start of a
// reference and of a tag.
inline ByteBlock notPlain(ByteBlock bytes) noexcept {
    return whereEither(whereBelow(bytes, 1),
                       whereEither(whereEqual(bytes, '&'), whereEqual(bytes, '<')));
}

// What isn't plain in a name: in addition what may not stand in one, and what ends an attribute.
inline ByteBlock notPlainInName(ByteBlock bytes) noexcept {
    const ByteBlock capital = _mm_andnot_si128(whereBelow(bytes, 'A'), whereBelow(bytes, 'Z' + 1));
    const ByteBlock separator = whereEither(whereEqual(bytes, '/'), whereEqual(bytes, '\\'));
    const ByteBlock end = whereEither(whereEqual(bytes, '"'), whereEqual(bytes, '>'));
    return whereEither(whereEither(whereBelow(bytes, ' '), whereEqual(bytes, '&')),
                       whereEither(capital, whereEither(separator, end)));
}

// Copies a block of bytes to as many units.
inline void copyBlock(ByteBlock bytes, char16_t* units) noexcept {
    const ByteBlock zero = _mm_setzero_si128();
    auto* target = reinterpret_cast<ByteBlock*>(units);
    _mm_storeu_si128(target, _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(target + 1, _mm_unpackhi_epi8(bytes, zero));
}

// Copies the plain bytes at the front and tells how many they are. There must be room for one block
// of units more than there are bytes.
template <ByteBlock (*isNotPlain)(ByteBlock)>
std::size_t copyPlain(std::string_view bytes, char16_t* units) noexcept {
    std::size_t i = 0;
    const auto copyNext = [&](const char* from) {
        const ByteBlock block = loadBlock(from);
        copyBlock(block, units + i);
        return bitsOf(isNotPlain(block));
    };
    for (; i + kBlock <= bytes.size(); i += kBlock)
        if (const unsigned marked = copyNext(bytes.data() + i))
            return i + static_cast<std::size_t>(std::countr_zero(marked));
    char last[kBlock] = {}; // what isn't copied to is null characters, which aren't plain
    bytes.copy(last, kBlock, i);
    return i + static_cast<std::size_t>(std::countr_zero(copyNext(last)));
}

} // namespace TARVO
