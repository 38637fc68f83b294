// The calling thread and its process.
#pragma once

#include <chrono>

namespace platform {

// Lets the calling thread rest for at least this long.
void pauseFor(std::chrono::milliseconds time);

// Whether the process runs with the rights of an administrator. False also if that can't be told.
bool isElevated();

} // namespace platform
