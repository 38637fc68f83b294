#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

// Padding goes by the columns that characters take up, so it tells how many there are.
bool fits(std::string_view text, std::size_t columns) {
    return fmt::formatted_size("{:<{}}", text, columns + 1) > text.size();
}

// Takes the last character off, however many bytes it has.
void dropLast(std::string_view& text) {
    while (text.size() > 1 && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
        text.remove_suffix(1);
    text.remove_suffix(1);
}

} // namespace

TextPlace placeOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 in the first line
    return {.line = static_cast<std::size_t>(std::ranges::count(before, '\n')) + 1,
            .column = before.size() - lineStart + 1};
}

std::string lowered(std::string text) {
    for (char& byte : text)
        if (byte >= 'A' && byte <= 'Z')
            byte = static_cast<char>(byte + 'a' - 'A');
    return text;
}

std::string systemText(std::u16string_view text) {
    return toUtf8(text.substr(0, text.find_last_not_of(u"\r\n") + 1));
}

std::string printable(std::string_view text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isC1 =
            byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if (byte < 0x20) {
            shown.append("\xE2\x90").push_back(static_cast<char>(0x80 + byte));
        } else if (byte == 0x7F) {
            shown.append("\xE2\x90\xA1");
        } else if (isC1) {
            shown.append("\xEF\xBF\xBD");
            ++i;
        } else {
            shown.push_back(text[i]);
        }
    }
    return shown;
}

std::string fitted(std::string_view text, std::size_t columns) {
    if (fits(text, columns))
        return std::string(text);
    while (!fits(text, columns - 1))
        dropLast(text);
    return std::string(text).append("\u2026");
}

} // namespace tool
