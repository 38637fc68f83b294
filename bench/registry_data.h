// Registry files of a given size, as a machine with many components would have them.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

// About `size` bytes of registrations: keys named by identifiers below /components/pmcs, each with
// the values of a component and a key of categories.
std::string registryOfSize(std::size_t size, const std::string& id);

// Ten by hundred by hundred keys, named a<n>, b<n> and c<n>.
std::string registryOfPaths(const std::string& id);

} // namespace bench
