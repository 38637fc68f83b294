// The text of a remote location: "tarvo://host:port", and nothing before, between or behind.
#pragma once

#include <cstdint>
#include <string_view>

namespace TARVO {

struct RemoteLocation {
    std::u16string_view host; // not empty; part of the text that was parsed
    std::int32_t port;        // the largest number there is, for any that is larger
};

// Raises RC_BAD_LOCATION for any other text. The port's range is left to the marshal library.
RemoteLocation parseRemoteLocation(std::u16string_view url);

} // namespace TARVO
