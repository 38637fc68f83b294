#include "registry/file_text.h"

#include "platform/text.h"
#include "registry/markup.h"
#include "registry/plain_text.h"

#include <algorithm>
#include <utility>

namespace TARVO {

namespace {

// Copies the bytes if all of them are plain. There is room for one block of units more than that.
template <ByteBlock (*isNotPlain)(ByteBlock)>
bool copyIfPlain(std::string_view bytes, char16_t* units) noexcept {
    unsigned marked = 0;
    const auto copy = [&](const char* from, std::size_t to) {
        const ByteBlock block = loadBlock(from);
        copyBlock(block, units + to);
        marked |= bitsOf(isNotPlain(block));
    };
    const std::size_t size = bytes.size();
    if (size < kBlock) {
        char block[kBlock];
        std::ranges::fill(block, ' ');
        bytes.copy(block, size);
        copy(block, 0);
        return marked == 0;
    }
    for (std::size_t i = 0; i + kBlock <= size; i += kBlock)
        copy(bytes.data() + i, i);
    // What is left over is done as a block that overlaps the one before.
    copy(bytes.data() + size - kBlock, size - kBlock);
    return marked == 0;
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
    std::u16string_view text = converted_;
    if (bytes.find('\0') != std::string_view::npos)
        text = text.substr(0, text.find(u'\0'));
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
