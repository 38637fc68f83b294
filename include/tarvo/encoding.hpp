// The library's texts are UTF-16; streams, terminals and most programs speak UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvo {

namespace detail {

inline constexpr char32_t kReplacement = 0xFFFD;

// Takes the next character off the front of a text that isn't empty.
inline char32_t takeCharacter(std::u16string_view& text) noexcept {
    const char32_t first = text.front();
    text.remove_prefix(1);
    if ((first & 0xF800) != 0xD800)
        return first;
    if (first >= 0xDC00 || text.empty() || (text.front() & 0xFC00) != 0xDC00)
        return kReplacement;
    const char32_t second = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((first & 0x3FF) << 10) + (second & 0x3FF);
}

inline char32_t takeCharacter(std::string_view& text) noexcept {
    const auto first = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (first < 0x80)
        return first;
    const std::size_t following = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4)
        return kReplacement;
    char32_t character = first & (0x3Fu >> following);
    for (std::size_t i = 0; i < following; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0) != 0x80)
            return kReplacement;
        character = character << 6 | (static_cast<unsigned char>(text.front()) & 0x3F);
        text.remove_prefix(1);
    }
    const bool isOverlong = character < (following == 3 ? 0x10000u : following == 2 ? 0x800u : 0u);
    const bool isSurrogate = (character & 0xFFFFF800) == 0xD800;
    return isOverlong || isSurrogate || character > 0x10FFFF ? kReplacement : character;
}

} // namespace detail

// What is no character becomes U+FFFD.
//
//     std::cout << tarvo::toUtf8(u"Gr\u00fc\u00dfe") << '\n';
inline std::string toUtf8(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const char32_t character = detail::takeCharacter(text);
        const int following = character < 0x80      ? 0
                              : character < 0x800   ? 1
                              : character < 0x10000 ? 2
                                                    : 3;
        constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
        bytes += static_cast<char>(kLead[following] | character >> 6 * following);
        for (int i = following; i-- > 0;)
            bytes += static_cast<char>(0x80 | (character >> 6 * i & 0x3F));
    }
    return bytes;
}

// What is no UTF-8 becomes U+FFFD.
//
//     const std::u16string name = tarvo::toUtf16("Ada");
inline std::u16string toUtf16(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const char32_t character = detail::takeCharacter(bytes);
        if (character >= 0x10000) {
            text += static_cast<char16_t>(0xD7C0 + (character >> 10));
            text += static_cast<char16_t>(0xDC00 | (character & 0x3FF));
        } else {
            text += static_cast<char16_t>(character);
        }
    }
    return text;
}

} // namespace tarvo
