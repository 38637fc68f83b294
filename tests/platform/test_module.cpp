// A module for the tests to load, with the platform layer linked into it.
#include "platform/module.h"

#include <tarvo/base.h>

extern "C" {

TARVO_EXPORT const char16_t* modulePath() {
    static const std::u16string path = TARVO::platform::ownModulePath();
    return path.c_str();
}

TARVO_EXPORT int answer() {
    return 42;
}
}
