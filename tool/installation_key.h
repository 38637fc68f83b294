// The key of the system's registry by which programs find an installation.
#pragma once

#include <string>

namespace tool {

// Both raise Failure if there is no right to it.
void writeInstallationKey(bool allUsers, const std::u16string& folder, const std::string& version);

// False if there is no such key.
bool removeInstallationKey(bool allUsers);

// Whether there is one, whatever it holds.
bool hasInstallationKey(bool allUsers);

} // namespace tool
