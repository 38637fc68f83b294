// Memory that runs out on demand. A test program that is linked with scarce_memory.cpp takes all
// memory of its own through it, the library's code in tarvo_static included.
#pragma once

#include <cstddef>

namespace tests {

// While it lives, an allocation of more than this many bytes fails.
class ScarceMemory {
  public:
    explicit ScarceMemory(std::size_t largest) noexcept;
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;
    ~ScarceMemory();
};

} // namespace tests
