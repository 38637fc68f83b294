// The calling thread and its process.
#pragma once

#include <chrono>

namespace platform {

// Lets the calling thread rest for at least this long.
void pauseFor(std::chrono::milliseconds time);

} // namespace platform
