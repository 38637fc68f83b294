#include "platform/text.h"

#include "platform/ascii.h"
#include "platform/windows/native_text.h"

#include <limits>
#include <stdexcept>

namespace TARVO::platform {
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
    const std::size_t front = copyAsciiFront(utf8, out.data() + start);
    if (front == utf8.size()) {
        return; // nearly always
    }
    const int rest = asCount(utf8.size() - front);
    auto* const target = reinterpret_cast<wchar_t*>(out.data() + start + front);
    const int count = MultiByteToWideChar(CP_UTF8, 0, utf8.data() + front, rest, target, rest);
    out.resize(start + front + static_cast<std::size_t>(count));
}

void appendUtf8(std::u16string_view text, std::string& out) {
    const std::size_t start = out.size();
    out.resize(start + text.size());
    const std::size_t front = copyAsciiFront(text, out.data() + start);
    if (front == text.size()) {
        return; // nearly always
    }
    constexpr std::size_t bytesPerUnit = 3;
    const std::size_t rest = text.size() - front;
    out.resize(start + front + rest * bytesPerUnit);
    const auto* const source = reinterpret_cast<const wchar_t*>(text.data() + front);
    const int count =
        WideCharToMultiByte(CP_UTF8, 0, source, asCount(rest), out.data() + start + front,
                            asCount(rest * bytesPerUnit), nullptr, nullptr);
    out.resize(start + front + static_cast<std::size_t>(count));
}

} // namespace TARVO::platform
