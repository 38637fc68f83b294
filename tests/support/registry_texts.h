// Hostile registry files at random, made of the pieces on which a reader of their mark-up could
// stumble: broken tags, white space and bytes of every kind, references, and whole documents that
// are a little wrong in places, so that much of what is wrong stands deep inside what is right.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tests {

struct RegistryText {
    std::string bytes; // at most kMaxRegistryText of them
    std::u16string knownId;
};

inline constexpr std::size_t kMaxRegistryText = 1400;

// The same seed gives the same text, on every platform.
RegistryText registryText(std::uint64_t seed);

// The bytes as they would stand in a string literal.
std::string escaped(std::string_view bytes);

} // namespace tests
