// Compares the library's reader of registry files with the definition of their language, token by
// token and then tree by tree. Shared by the test over random texts and the fuzz target.
#pragma once

#include <string>
#include <string_view>

namespace tests {

// Where the two differ first, in words; empty if they agree. For texts as short as the definition
// can take (registry_oracle.h).
std::string registryDifference(std::string_view bytes, std::u16string_view knownId);

// The bytes as they would stand in a string literal.
std::string escaped(std::string_view bytes);

} // namespace tests
