#include "registry/file_text.h"

#include "platform/text.h"
#include "registry/markup.h"

#include <algorithm>
#include <emmintrin.h>
#include <utility>

namespace TARVO {

namespace {

// A plain byte is a character by itself: ASCII, and neither the end of the text nor the start of a
// reference. In a name it must be allowed there, too. Each test marks the bytes that aren't plain;
// bytes beyond ASCII are negative.
__m128i notPlain(__m128i bytes) noexcept {
    return _mm_or_si128(_mm_cmplt_epi8(bytes, _mm_set1_epi8(1)),
                        _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&')));
}

__m128i notPlainInName(__m128i bytes) noexcept {
    const __m128i control = _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
    const __m128i capital = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8('A' - 1)),
                                          _mm_cmplt_epi8(bytes, _mm_set1_epi8('Z' + 1)));
    const __m128i separator = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('/')),
                                           _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\')));
    const __m128i reference = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&'));
    return _mm_or_si128(_mm_or_si128(control, capital), _mm_or_si128(separator, reference));
}

using Test = __m128i (*)(__m128i);
constexpr std::size_t kBlock = 16;

// Copies a block of bytes to as many units; gives a bit for each byte that isn't plain.
template <Test notPassed>
int copyBlock(const char* from, char16_t* units) noexcept {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(units), _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(units + kBlock / 2),
                     _mm_unpackhi_epi8(bytes, zero));
    return _mm_movemask_epi8(notPassed(bytes));
}

// Copies the bytes if all of them are plain. There is room for one block of units more than that.
template <Test notPassed>
bool copyIfPlain(std::string_view bytes, char16_t* units) noexcept {
    const std::size_t size = bytes.size();
    if (size < kBlock) {
        char block[kBlock] = {};
        bytes.copy(block, size);
        return (copyBlock<notPassed>(block, units) & ((1 << size) - 1)) == 0;
    }
    int marked = 0;
    for (std::size_t i = 0; i + kBlock <= size; i += kBlock)
        marked |= copyBlock<notPassed>(bytes.data() + i, units + i);
    // What is left over is done as a block that overlaps the one before.
    const std::size_t last = size - kBlock;
    return (marked | copyBlock<notPassed>(bytes.data() + last, units + last)) == 0;
}

bool isFileName(std::u16string_view name) noexcept {
    return !name.empty() && std::ranges::none_of(name, [](char16_t unit) {
        return unit < u' ' || (unit >= u'A' && unit <= u'Z') || unit == u'/' || unit == u'\\';
    });
}

} // namespace

void FileText::decode(std::string_view bytes) {
    if (!copyIfPlain<notPlain>(bytes, prepare(bytes.size())))
        decodeWithCare(bytes);
}

bool FileText::decodeName(std::string_view bytes) {
    if (copyIfPlain<notPlainInName>(bytes, prepare(bytes.size())))
        return !bytes.empty();
    decodeWithCare(bytes);
    return isFileName(view());
}

void FileText::decodeWithCare(std::string_view bytes) {
    if (bytes.find('&') != std::string_view::npos) {
        replaced_.clear();
        decodeEntities(bytes, replaced_);
        bytes = replaced_;
    }
    converted_.clear();
    platform::appendUtf16(bytes, converted_);
    const std::u16string_view text(converted_.c_str(),
                                   std::min(converted_.find(u'\0'), converted_.size()));
    text.copy(prepare(text.size()), text.size());
}

void FileText::swap(FileText& other) noexcept {
    std::swap(units_, other.units_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
}

// What stood there before is lost, and what stands there now is for the caller to say: unlike in a
// string, nothing is cleared that is about to be overwritten.
char16_t* FileText::prepare(std::size_t size) {
    if (size + kBlock > capacity_) {
        const std::size_t capacity = 2 * size + kBlock;
        units_ = std::make_unique_for_overwrite<char16_t[]>(capacity);
        capacity_ = capacity;
    }
    size_ = size;
    return units_.get();
}

} // namespace TARVO
