// Trying again what fails while another process has its hands on a file; nobody has for long.
#pragma once

#include "platform/process.h"

#include <chrono>

namespace TARVO {

// Makes up to 100 attempts, with a rest of a tenth of a second behind each that fails. Whether one
// succeeded.
template <class Attempt>
bool tryPatiently(Attempt&& attempt) {
    constexpr int kAttempts = 100;
    for (int i = 0; i < kAttempts; ++i) {
        if (attempt())
            return true;
        platform::pauseFor(std::chrono::milliseconds(100));
    }
    return false;
}

} // namespace TARVO
