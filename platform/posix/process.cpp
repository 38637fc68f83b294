#include "platform/process.h"

#include <thread>

namespace platform {

void pauseFor(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

} // namespace platform
