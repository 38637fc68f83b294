// Ways of the system itself to create what the benchmark of creations creates.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

struct CreationPeer {
    std::string name;
    std::function<void()> createAndRelease;
};

// Beside the loading of the library, which all systems have.
//   library  the full path of the library with the component
std::vector<CreationPeer> systemCreationPeers(std::u16string_view library);

} // namespace bench
