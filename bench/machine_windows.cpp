#include "bench/machine.h"
#include "platform/process.h"

#include <tarvo/environment.h>
#include <tarvo/text.hpp>

#include <cstdlib>
#include <iostream>

namespace bench {

// A Wine prefix is a machine of its own, and a Windows machine is somebody's.
std::filesystem::path userRegistryFile() {
    if (!TARVO::platform::isWine()) {
        std::cerr << "On Windows, benchmarks run under Wine alone.\n";
        std::exit(1);
    }
    tarvo::String folder;
    getTarvoUserDataFolder(folder.pair());
    return std::filesystem::path(folder.text()) / "registry.dat";
}

} // namespace bench
