// The commands of the tool. Each prints its result and raises Failure if it can't do its work.
#pragma once

#include <string>

namespace tool {

enum class Scope { all, machine, user };

// Prints a key and all that is below it. A malformed file of a scope that is shown along with the
// other is reported on the error stream.
void showRegistry(const std::string& path, Scope scope, bool asJson);

// Prints whether a registry file is well-formed, or its first fault. False for a malformed one.
bool verifyRegistryFile(const std::string& path);

// Prints what is installed and where its data lie.
void printInfo(bool asJson);

} // namespace tool
