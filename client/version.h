// Versions of the library: four numbers, of which the first counts most.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TARVO {

// The version of an installation as the system's registry tells it. Digits and points are read up
// to the first other character; fields that are missing are 0.
std::array<std::uint32_t, 4> parseInstalledVersion(std::u16string_view text);

// The first three numbers that a library reports. Nothing if it doesn't report four.
struct LibraryVersion {
    int major;
    int minor;
    int patch;
};
std::optional<LibraryVersion> parseLibraryVersion(std::u16string_view text);

constexpr LibraryVersion kCompiledFor = {1, 2, 1};

constexpr bool isNewEnough(const LibraryVersion& version) {
    if (version.major != kCompiledFor.major)
        return version.major > kCompiledFor.major;
    if (version.minor != kCompiledFor.minor)
        return version.minor > kCompiledFor.minor;
    return version.patch >= kCompiledFor.patch;
}

} // namespace TARVO
