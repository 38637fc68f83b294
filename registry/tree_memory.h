// Memory for the nodes and values of a tree. Loading a file makes one object for each of its
// elements, so they are taken front to back from chunks instead of one by one from the heap. Each
// object is given back by itself, from any thread, and a chunk goes with the last object in it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace TARVO {

class TreeMemory {
  public:
    // Where an object lies within its chunk; the object keeps it to be given back with.
    using Place = std::uint32_t;
    struct Block {
        void* address;
        Place place;
    };

    TreeMemory() noexcept = default;
    TreeMemory(const TreeMemory&) = delete;
    TreeMemory& operator=(const TreeMemory&) = delete;
    ~TreeMemory() { leaveChunk(); }

    // Room for an object of the alignment of a pointer. One thread at a time.
    Block allocate(std::size_t size);

    // Gives an object's room back. Any thread.
    static void free(void* address, Place place) noexcept;

  private:
    struct Chunk {
        std::atomic<std::uint32_t> users; // objects, and the memory itself while it fills the chunk
    };

    void openChunk(std::size_t size);
    void leaveChunk() noexcept;
    static void dropUser(Chunk* chunk) noexcept;

    Chunk* chunk_ = nullptr;
    std::size_t used_ = 0;
    std::size_t size_ = 0;
};

} // namespace TARVO
