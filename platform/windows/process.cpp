#include "platform/process.h"

#include <windows.h>

namespace platform {

void pauseFor(std::chrono::milliseconds time) {
    Sleep(static_cast<DWORD>(time.count()));
}

} // namespace platform
