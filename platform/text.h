// Text between the system's two encodings, names whose case does not count, and the one formatted
// text that is read by the rules of the standard library. Malformed text never fails; what becomes
// of it is the same on both platforms.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace TARVO::platform {

// Appends UTF-8 as UTF-16, NUL characters included. Each malformed piece becomes one U+FFFD. A
// piece is a lead byte with the continuation bytes behind it up to the one that makes it malformed,
// or a byte that can't lead; but if the text ends before the sequence could be complete, all that
// is left of the text is one piece.
void appendUtf16(std::string_view utf8, std::u16string& out);

// Appends UTF-16 as UTF-8, NUL characters included. An unpaired surrogate becomes U+FFFD.
void appendUtf8(std::u16string_view text, std::string& out);

// Reads the text of an identifier as the standard library's formatted input does with
// "{%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x}". True if all sixteen
// fields were there; what stands behind them is not looked at. A field is at most two characters:
// digits after an optional sign, or "0x", which counts as 0. White space before a field is skipped.
// Of each number the low eight bits are stored; on failure `bytes` may hold some of them.
//   text  ends in a null character
bool scanUUID(const char16_t* text, std::array<std::uint8_t, 16>& bytes);

} // namespace TARVO::platform
