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

// The bytes of a plain text that stands among others: they can be read to the end of the last
// block.
class PlainText {
  public:
    PlainText() noexcept = default;
    explicit PlainText(std::string_view bytes) noexcept : bytes_(bytes) {}

    std::string_view bytes() const noexcept { return bytes_; }
    std::size_t size() const noexcept { return bytes_.size(); }

  private:
    std::string_view bytes_;
};

// Copies a text to as many units, and what stands behind it to the end of the last block.
inline void copyBlocks(PlainText text, char16_t* units) noexcept {
    for (std::size_t i = 0; i < text.size(); i += kBlock)
        copyBlock(loadBlock(text.bytes().data() + i), units + i);
}

// Takes the bytes in front of the first that `marks` marks. False if none is marked in the whole
// blocks that there are. So what is taken can be read to the end of its last block.
template <ByteBlock (*marks)(ByteBlock)>
bool takeUntil(std::string_view& bytes, std::string_view& taken) noexcept {
    for (std::size_t i = 0; i + kBlock <= bytes.size(); i += kBlock) {
        if (const unsigned marked = bitsOf(marks(loadBlock(bytes.data() + i)))) {
            taken = bytes.substr(0, i + static_cast<std::size_t>(std::countr_zero(marked)));
            bytes.remove_prefix(taken.size());
            return true;
        }
    }
    return false;
}

} // namespace TARVO
