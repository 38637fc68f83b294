// The text of a registry file, as the library writes it: one element a line, indented by its depth,
// values before sub-keys.
#pragma once

#include "registry/tree.h"

#include <string>
#include <string_view>

namespace TARVO {

// Appends a text in UTF-8 with the marks of the language as references. Characters below 9 can't be
// told in it and are left out.
void escapeText(std::u16string_view text, std::string& out);

// Appends what a key holds. `depth` is the depth of its lines, 1 for what the root holds.
void writeKey(const TarvoRegistry& key, std::size_t depth, std::string& out);

// The whole file.
std::string registryText(const TarvoRegistry& root, std::u16string_view id);

} // namespace TARVO
