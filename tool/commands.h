// The commands of the tool. Each prints its result and raises Failure if it can't do its work.
#pragma once

#include <string>

namespace tool {

enum class Scope { all, machine, user };

// Prints a key and all that is below it. A malformed file of a scope that is shown along with the
// other is reported on the error stream.
void showRegistry(const std::string& path, Scope scope, bool asJson);

// A value in the registry of one scope.
struct ValuePlace {
    std::string path;
    std::string name;
    Scope scope = Scope::user;
};

enum class ValueType { string, integer, uuid, empty };

// Sets a value; the key is made if it isn't there.
void setRegistryValue(const ValuePlace& place, ValueType type, const std::string& text);

void deleteRegistryValue(const ValuePlace& place);

// Deletes a key with all below it.
void deleteRegistryKey(const std::string& path, Scope scope);

// Prints a key of one scope, with all below it, as JSON that importRegistry takes.
void exportRegistry(const std::string& path, Scope scope);

// Sets everything that the file holds, below the key at the path, by one commit.
void importRegistry(const std::string& file, const std::string& path, Scope scope);

// Puts the backup of a scope's file in the place of the file, which is kept aside.
void restoreBackup(Scope scope);

// Prints whether a registry file is well-formed, or its first fault. False for a malformed one, and
// for one that was cut off.
bool verifyRegistryFile(const std::string& path);

// Prints what is installed and where its data lie.
void printInfo(bool asJson);

} // namespace tool
