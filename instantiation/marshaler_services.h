// The services that create components in other processes and on other machines. Each is started
// when a creation first needs it, and serves all creations of this process until tarvoTerminate.
#pragma once

#include "tarvo/base.h"

#include <compare>
#include <cstdint>
#include <string>

namespace TARVO {

// What a service is for: the location of a bitness for all components of that bitness, or a
// location and its text, exactly as registered.
struct ServiceKey {
    std::int32_t location;
    std::u16string text;

    auto operator<=>(const ServiceKey&) const = default;
};

// Has a service create a component, and starts the service if need be. Raises the code of whatever
// failed, RC_BAD_LOCATION for the text of a remote location that isn't of the form that it takes,
// and RC_NULL_POINTER if the marshal library gave no service. Any thread; one service is started at
// a time, while components are created side by side.
void createAtService(const ServiceKey& key, const UUID& uuid, std::uint32_t flags,
                     IVaskInterface** instance);

} // namespace TARVO
