// The examinations of `tarvo setup check`, in the order in which they are made: each stands on what
// the ones before it have found, and mended.
#pragma once

#include "tool/checkup.h"
#include "tool/library.h"

namespace tool {

// Which copies are installed, and which one programs take.
void examineCopies(Checkup& checkup);

// The libraries beside the one that programs take.
void examineCompanions(Checkup& checkup, const Library& library);

// The registry files of both scopes, their backups and the rights to them.
void examineScopes(Checkup& checkup, const Library& library);

// Whether all that is registered goes together. Both files must be whole for that.
void examineRegistrations(Checkup& checkup, const Library& library);

} // namespace tool
