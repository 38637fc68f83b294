#include "platform/process.h"

#include <windows.h>

namespace platform {

void pauseFor(std::chrono::milliseconds time) {
    Sleep(static_cast<DWORD>(time.count()));
}

bool isElevated() {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return false;
    }
    TOKEN_ELEVATION elevation{};
    DWORD size = sizeof elevation;
    const bool known = GetTokenInformation(token, TokenElevation, &elevation, size, &size) != 0;
    CloseHandle(token);
    return known && elevation.TokenIsElevated != 0;
}

} // namespace platform
