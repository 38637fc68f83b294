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
    bool allUsers;                        // whose root tells of it
};

constexpr const char16_t* kInstallationKey = u"Software\\Ostrandia\\TARVO\\x64";

// The file that a program loads.
std::u16string libraryPath(const Installation& installation);

// The installation that one root of the system's registry tells of, if there is one.
std::optional<Installation> installationOf(bool allUsers);

// The newest of those that this process may trust.
std::optional<Installation> newestInstallation();

} // namespace TARVO
