#include "bench/heap_use.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace bench {

void* HeapUse::allocate(std::size_t size) {
    void* memory = std::malloc(size);
    now += malloc_usable_size(memory);
    most = std::max(most, now);
    ++allocations;
    return memory;
}

void HeapUse::free(void* memory) {
    now -= malloc_usable_size(memory);
    std::free(memory);
}

HeapUse& heap() {
    static constinit HeapUse use;
    return use;
}

} // namespace bench

void* operator new(std::size_t size) {
    void* memory = bench::heap().allocate(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    bench::heap().free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    bench::heap().free(memory);
}
