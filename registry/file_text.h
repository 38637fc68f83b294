// The text of a name, a value or an attribute, as it comes out of a registry file's bytes:
// character references replaced, UTF-8 turned into UTF-16 with U+FFFD for what is malformed, cut at
// the first null character. The object is room that is used again from text to text.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace TARVO {

class FileText {
  public:
    std::u16string_view view() const noexcept { return {units_.get(), size_}; }
    void clear() noexcept { size_ = 0; }

    // Takes the text of the bytes in the place of the one before.
    void decode(std::string_view bytes);

    // The same for what should be a key's or a value's name. False if it may not be one: it is
    // empty, or holds a capital from A to Z, a separator or a control character.
    bool decodeName(std::string_view bytes);

    void swap(FileText& other) noexcept;

  private:
    char16_t* prepare(std::size_t size);
    void decodeWithCare(std::string_view bytes);

    std::unique_ptr<char16_t[]> units_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
    std::string replaced_; // room to work in, for the few texts that aren't plain
    std::u16string converted_;
};

} // namespace TARVO
