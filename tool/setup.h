// The commands of `tarvo setup`. Each prints its result and raises Failure if it can't do its work.
#pragma once

namespace tool {

// Makes the installation that the tool belongs to known to programs.
void installSetup(bool allUsers);

// Makes the installation that is known in a scope unknown.
void removeSetup(bool allUsers);

// Examines the installation and mends what it safely can if it is asked to. False if there are
// findings that are left.
bool checkSetup(bool asJson, bool mends);

} // namespace tool
