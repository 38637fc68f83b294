// Bringing definitions into one scope and taking them out again, for every command that does so.
#pragma once

#include "tarvo/uuid.hpp"
#include "tool/definition.h"
#include "tool/library.h"
#include "tool/scope_writer.h"

namespace tool {

// Registers what a file defines; a lower version is replaced. Raises Failure if a higher one stands
// there, or one with a version where the definition has none.
void registerIn(const Library& library, const Definition& definition, bool allUsers);

// Whether one of the libraries that the file defines is registered with a higher version.
bool isOutdated(const Library& library, const Definition& definition, bool allUsers);

bool isRegisteredIn(const ScopeWriter& writer, const tarvo::UUID& uuid);
bool hasLocationIn(const ScopeWriter& writer, const tarvo::UUID& uuid, const std::string& location);

// Removes a library and its items. False if it isn't registered in the scope.
bool unregisterFrom(const Library& library, const tarvo::UUID& uuid, bool allUsers);

} // namespace tool
