#include "platform/process.h"

#include <objbase.h>
#include <windows.h>

namespace TARVO::platform {

void pauseFor(std::chrono::milliseconds time) {
    Sleep(static_cast<DWORD>(time.count()));
}

namespace {

// What the process's token says of one class of information; the initial value if it can't be read.
template <class Information>
Information tokenInformation(TOKEN_INFORMATION_CLASS which) {
    Information information{};
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return information;
    }
    DWORD size = sizeof information;
    if (!GetTokenInformation(token, which, &information, size, &size)) {
        information = {};
    }
    CloseHandle(token);
    return information;
}

} // namespace

bool isElevated() {
    return tokenInformation<TOKEN_ELEVATION>(TokenElevation).TokenIsElevated != 0;
}

bool hasFullElevation() {
    return isElevated() &&
           tokenInformation<TOKEN_ELEVATION_TYPE>(TokenElevationType) == TokenElevationTypeFull;
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

} // namespace TARVO::platform
