#include "tests/support/apartment.h"

#include <objbase.h>
#include <windows.h>

namespace support {

JoinedApartment::JoinedApartment(TARVO::platform::Apartment kind) {
    if (kind == TARVO::platform::Apartment::none)
        return;
    const bool single = kind == TARVO::platform::Apartment::singleThreaded;
    joined_ = SUCCEEDED(
        CoInitializeEx(nullptr, single ? COINIT_APARTMENTTHREADED : COINIT_MULTITHREADED));
}

JoinedApartment::~JoinedApartment() {
    if (joined_)
        CoUninitialize();
}

} // namespace support
