#include "platform/process.h"

#include <thread>
#include <unistd.h>

namespace TARVO::platform {

void pauseFor(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

bool isElevated() {
    return geteuid() == 0;
}

bool hasFullElevation() {
    return isElevated();
}

bool isWine() {
    return false;
}

Apartment currentApartment() {
    return Apartment::none;
}

} // namespace TARVO::platform
