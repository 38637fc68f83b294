// The installations of the library on this machine.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace TARVO {

struct Installation {
    std::u16string folder;
    std::array<std::uint32_t, 4> version; // all 0 if it isn't known
};

// The installation that one root of the system's registry tells of, if there is one.
std::optional<Installation> installationOf(bool allUsers);

// The newest of those that this process may trust.
std::optional<Installation> newestInstallation();

} // namespace TARVO
