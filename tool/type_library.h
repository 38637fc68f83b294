// The commands of `tarvo library`. Each prints its result and raises Failure if it can't do its
// work.
#pragma once

#include <string>

namespace tool {

// Reads a definition file and tells what it defines, or where it has mistakes.
void checkDefinition(const std::string& path);

// Registers what a definition file defines. What is registered with a lower version is replaced.
void registerDefinition(const std::string& path, bool allUsers);

void listTypeLibraries(bool json);

// Shows a library, which is named by identifier or name, and what it defines.
void showTypeLibrary(const std::string& library, bool json);

void unregisterTypeLibrary(const std::string& uuid, bool allUsers);

void setTypeLibraryLocation(const std::string& uuid, const std::string& location,
                            const std::string& text, bool allUsers);
void removeTypeLibraryLocation(const std::string& uuid, const std::string& location, bool allUsers);

} // namespace tool
