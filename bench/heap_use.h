// What a benchmark takes of the heap. The program's operator new and delete count into it, and so
// can any other allocator.
#pragma once

#include <cstddef>

namespace bench {

struct HeapUse {
    std::size_t now = 0;
    std::size_t most = 0; // since it was last set
    std::size_t allocations = 0;

    void* allocate(std::size_t size);
    void free(void* memory);
};

// One thread at a time.
HeapUse& heap();

} // namespace bench
