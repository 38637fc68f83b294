#include "platform/process.h"

#include <objbase.h>
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

bool isWine() {
    static const bool found = [] {
        HMODULE system = nullptr;
        return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, L"ntdll.dll",
                                  &system) &&
               GetProcAddress(system, "wine_get_version") != nullptr;
    }();
    return found;
}

Apartment currentApartment() {
    APTTYPE type{};
    APTTYPEQUALIFIER qualifier{};
    if (FAILED(CoGetApartmentType(&type, &qualifier)) ||
        qualifier == APTTYPEQUALIFIER_IMPLICIT_MTA ||
        qualifier == APTTYPEQUALIFIER_NA_ON_IMPLICIT_MTA) {
        return Apartment::none;
    }
    switch (type) {
    case APTTYPE_STA:
    case APTTYPE_MAINSTA:
        return Apartment::singleThreaded;
    case APTTYPE_MTA:
        return Apartment::multiThreaded;
    default:
        return Apartment::none;
    }
}

} // namespace platform
