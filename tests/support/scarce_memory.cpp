#include "tests/support/scarce_memory.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kNoLimit = SIZE_MAX;
thread_local std::size_t largestAllocation = kNoLimit;

} // namespace

namespace tests {

ScarceMemory::ScarceMemory(std::size_t largest) noexcept {
    largestAllocation = largest;
}

ScarceMemory::~ScarceMemory() {
    largestAllocation = kNoLimit;
}

} // namespace tests

void* operator new(std::size_t size) {
    void* const memory = size > largestAllocation ? nullptr : std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return size > largestAllocation ? nullptr : std::malloc(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

// Pools ask in this way, for no more than any memory is aligned to.
void* operator new(std::size_t size, std::align_val_t alignment) {
    if (static_cast<std::size_t>(alignment) > __STDCPP_DEFAULT_NEW_ALIGNMENT__)
        throw std::bad_alloc();
    return operator new(size);
}

void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}
