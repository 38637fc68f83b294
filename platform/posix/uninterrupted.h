// Calls of the system that a signal may break off.
#pragma once

#include <cerrno>

namespace TARVO::platform {

// Repeats a call for as long as a signal breaks it off.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

} // namespace TARVO::platform
