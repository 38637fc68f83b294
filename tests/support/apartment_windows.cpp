#include "tests/support/apartment.h"

#include <objbase.h>
#include <windows.h>

namespace support {

JoinedApartment::JoinedApartment(platform::Apartment kind) {
    if (kind == platform::Apartment::none)
        return;
    const bool single = kind == platform::Apartment::singleThreaded;
    joined_ = SUCCEEDED(
        CoInitializeEx(nullptr, single ? COINIT_APARTMENTTHREADED : COINIT_MULTITHREADED));
}

JoinedApartment::~JoinedApartment() {
    if (joined_)
        CoUninitialize();
}

} // namespace support
