#include "bench/machine.h"

#include <tarvo/environment.h>
#include <tarvo/text.hpp>

#include <cstdlib>
#include <random>
#include <string>

namespace bench {

namespace {

class Machine {
  public:
    Machine() {
        std::filesystem::create_directories(folder_);
        setenv("TARVO_PLATFORM_ROOT", folder_.c_str(), 1);
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine() { std::filesystem::remove_all(folder_); }

  private:
    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                          ("tarvo-bench-" + std::to_string(std::random_device()()));
};

} // namespace

std::filesystem::path userRegistryFile() {
    static const Machine machine;
    tarvo::String folder;
    getTarvoUserDataFolder(folder.pair());
    return std::filesystem::path(folder.text()) / "registry.dat";
}

} // namespace bench
