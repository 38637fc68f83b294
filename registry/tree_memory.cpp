#include "registry/tree_memory.h"

#include <algorithm>
#include <new>

namespace TARVO {

namespace {

// Small trees take little; big ones soon get chunks that make the heap's part negligible.
constexpr std::size_t kSmallestChunk = 1024;
constexpr std::size_t kBiggestChunk = 64 * 1024;
constexpr std::size_t kAlignment = alignof(void*);

// More than a chunk has room for objects. While it is filled, it counts as so many users, so that
// making an object needs no atomic step.
constexpr std::uint32_t kFilling = 1U << 31;

constexpr std::size_t roundUp(std::size_t size) {
    return (size + kAlignment - 1) / kAlignment * kAlignment;
}

} // namespace

TreeMemory::Block TreeMemory::allocate(std::size_t size) {
    size = roundUp(size);
    if (size > size_ - used_)
        openChunk(size);
    const Block block = {reinterpret_cast<char*>(chunk_) + used_, static_cast<Place>(used_)};
    ++objects_;
    used_ += size;
    return block;
}

void TreeMemory::free(void* address, Place place) noexcept {
    dropUsers(reinterpret_cast<Chunk*>(static_cast<char*>(address) - place), 1);
}

// An object that is too big for any chunk gets one to itself.
void TreeMemory::openChunk(std::size_t size) {
    constexpr std::size_t kFirstPlace = roundUp(sizeof(Chunk));
    const std::size_t next = std::clamp(2 * (size_ + kSlack), kSmallestChunk, kBiggestChunk);
    const std::size_t chunkSize = std::max(next, kFirstPlace + size + kSlack);
    void* memory = ::operator new(chunkSize);
    leaveChunk();
    chunk_ = new (memory) Chunk{kFilling};
    used_ = kFirstPlace;
    size_ = chunkSize - kSlack;
    objects_ = 0;
}

void TreeMemory::leaveChunk() noexcept {
    if (chunk_ != nullptr)
        dropUsers(chunk_, kFilling - objects_);
    chunk_ = nullptr;
}

void TreeMemory::dropUsers(Chunk* chunk, std::uint32_t count) noexcept {
    if (chunk->users.fetch_sub(count, std::memory_order_acq_rel) == count) {
        chunk->~Chunk();
        ::operator delete(chunk);
    }
}

} // namespace TARVO
