// Where the stand-ins for the system's own folders and files lie. With TARVO_PLATFORM_ROOT in the
// environment all of them lie below that folder, so that a test or a demonstration has a machine of
// its own. A place relative to the current folder is none: it is kept when that folder changes.
#pragma once

#include <optional>
#include <string>

namespace TARVO::platform {

// Nothing if the variable isn't set. Empty if it names no place: never is the user's own machine
// taken instead.
std::optional<std::string> platformRoot();

// The folder that a variable names, else the one of this name in the user's home; empty if neither
// can be told.
std::string userFolder(const char* variable, const char* nameInHome);

// Makes the folder and those above it that are missing.
bool ensureFolder(const std::string& path);

bool isFolder(const std::string& path);

} // namespace TARVO::platform
