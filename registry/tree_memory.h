// Memory for the nodes and values of a tree. Loading a file makes one object for each of its
// elements, so they are taken front to back from chunks instead of one by one from the heap. Each
// object is given back by itself, from any thread, and a chunk goes with the last object in it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

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

    // Room for an object of the alignment of a pointer. Until the next is made, it may write as
    // much as kSlack bytes beyond. One thread at a time.
    static constexpr std::size_t kSlack = 32;
    Block allocate(std::size_t size);

    // Gives an object's room back. Any thread.
    static void free(void* address, Place place) noexcept;

  private:
    struct Chunk {
        std::atomic<std::uint32_t> users; // objects, and kFilling while it is filled
    };

    void openChunk(std::size_t size);
    void leaveChunk() noexcept;
    static void dropUsers(Chunk* chunk, std::uint32_t count) noexcept;

    Chunk* chunk_ = nullptr;
    std::size_t used_ = 0;
    std::size_t size_ = 0;
    std::uint32_t objects_ = 0; // made in this chunk; it counts them as users when it is left
};

// An array of its own place in a tree's memory, for elements that need no tearing down.
template <class T>
class TreeArray {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignof(void*));
    static constexpr std::size_t kEntrySize = sizeof(T[1]);

  public:
    TreeArray() noexcept = default;
    TreeArray(TreeMemory& memory, std::uint32_t size) : size_(size) {
        const auto block = memory.allocate(size * kEntrySize);
        first_ = static_cast<T*>(block.address);
        place_ = block.place;
        std::uninitialized_value_construct_n(first_, size);
    }
    TreeArray(TreeArray&& other) noexcept { *this = std::move(other); }
    TreeArray& operator=(TreeArray&& other) noexcept {
        std::swap(first_, other.first_);
        std::swap(place_, other.place_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~TreeArray() {
        if (first_ != nullptr)
            TreeMemory::free(first_, place_);
    }

    std::uint32_t size() const noexcept { return size_; }
    T* begin() const noexcept { return first_; }
    T* end() const noexcept { return first_ + size_; }
    T& operator[](std::uint32_t index) const noexcept { return first_[index]; }

  private:
    T* first_ = nullptr;
    TreeMemory::Place place_ = 0;
    std::uint32_t size_ = 0;
};

} // namespace TARVO
