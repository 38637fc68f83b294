// Texts of a definition as callers get them. A definition keeps its texts as they are written; what
// belongs to the writing alone goes when somebody asks for one.
#pragma once

#include <string>
#include <string_view>

namespace TARVO::idl {

// A piece of a definition as errors show it.
std::string inQuotes(std::string_view text);

// Whether a text without its quotes holds nothing but what a quoted text may: its only escapes are
// \" and \\, and there are no control characters but the tabulator. Gives what is wrong, or null.
const char* faultOfQuoted(std::string_view text) noexcept;

// A quoted text with its escapes replaced.
std::u16string plainText(std::string_view quoted);

// The lines of a documentation comment without the marks of the comment.
std::u16string documentationText(std::string_view comment);

} // namespace TARVO::idl
