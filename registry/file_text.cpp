#include "registry/file_text.h"

#include "platform/text.h"
#include "registry/markup.h"

#include <algorithm>
#include <utility>

namespace TARVO {

namespace {

bool isFileName(std::u16string_view name) noexcept {
    return !name.empty() && std::ranges::none_of(name, [](char16_t unit) {
        return unit < u' ' || (unit >= u'A' && unit <= u'Z') || unit == u'/' || unit == u'\\';
    });
}

} // namespace

void FileText::decode(std::string_view bytes) {
    if (takePlain<notPlain>(bytes) < bytes.size())
        decodeWithCare(bytes);
}

bool FileText::decodeName(std::string_view bytes) {
    if (takePlain<notPlainInName>(bytes) == bytes.size())
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
    makeRoom(text.size());
    size_ = text.copy(units_.get(), text.size());
}

void FileText::swap(FileText& other) noexcept {
    std::swap(units_, other.units_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
}

void FileText::makeRoom(std::size_t units) {
    if (units <= capacity_)
        return;
    units_ = std::make_unique_for_overwrite<char16_t[]>(2 * units);
    capacity_ = 2 * units;
}

} // namespace TARVO
