#include "platform/text.h"

#include "platform/ascii.h"

#include <limits>
#include <stdexcept>
#include <windows.h>

namespace platform {
namespace {

// The system counts in int, and wants all of a text at once: what a malformed piece becomes depends
// on what follows it.
int asCount(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::length_error("text too long for the system's conversion");
    }
    return static_cast<int>(size);
}

} // namespace

void appendUtf16(std::string_view utf8, std::u16string& out) {
    const std::size_t start = out.size();
    out.resize(start + utf8.size()); // no byte becomes more than one unit
    const std::size_t done = copyAsciiFront(utf8, out.data() + start);
    const int rest = asCount(utf8.size() - done);
    int converted = 0;
    if (rest > 0) {
        converted =
            MultiByteToWideChar(CP_UTF8, 0, utf8.data() + done, rest,
                                reinterpret_cast<wchar_t*>(out.data() + start + done), rest);
    }
    out.resize(start + done + static_cast<std::size_t>(converted));
}

void appendUtf8(std::u16string_view text, std::string& out) {
    constexpr std::size_t bytesPerUnit = 3;
    const std::size_t start = out.size();
    out.resize(start + text.size() * bytesPerUnit);
    const std::size_t done = copyAsciiFront(text, out.data() + start);
    const std::size_t rest = text.size() - done;
    int converted = 0;
    if (rest > 0) {
        converted = WideCharToMultiByte(
            CP_UTF8, 0, reinterpret_cast<const wchar_t*>(text.data() + done), asCount(rest),
            out.data() + start + done, asCount(rest * bytesPerUnit), nullptr, nullptr);
    }
    out.resize(start + done + static_cast<std::size_t>(converted));
}

} // namespace platform
