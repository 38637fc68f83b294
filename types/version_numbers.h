// Versions of type libraries: numbers with points between them, of which the first counts most.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace TARVO {

using VersionNumbers = std::vector<std::int32_t>;

// The numbers that a text begins with; reading ends at the first thing that is neither a number nor
// a point behind one.
VersionNumbers versionNumbers(std::u16string_view text);

// Whether a version is greater than another. Missing numbers count as 0.
bool isGreaterVersion(const VersionNumbers& one, const VersionNumbers& other);

} // namespace TARVO
