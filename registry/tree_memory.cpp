#include "registry/tree_memory.h"

#include <algorithm>
#include <new>

namespace TARVO {

namespace {

// Small trees take little; big ones soon get chunks that make the heap's part negligible.
constexpr std::size_t kSmallestChunk = 1024;
constexpr std::size_t kBiggestChunk = 64 * 1024;
constexpr std::size_t kAlignment = alignof(void*);

constexpr std::size_t roundUp(std::size_t size) {
    return (size + kAlignment - 1) / kAlignment * kAlignment;
}

} // namespace

TreeMemory::Block TreeMemory::allocate(std::size_t size) {
    size = roundUp(size);
    if (size > size_ - used_)
        openChunk(size);
    const Block block = {reinterpret_cast<char*>(chunk_) + used_, static_cast<Place>(used_)};
    chunk_->users.fetch_add(1, std::memory_order_relaxed);
    used_ += size;
    return block;
}

void TreeMemory::free(void* address, Place place) noexcept {
    dropUser(reinterpret_cast<Chunk*>(static_cast<char*>(address) - place));
}

// An object that is too big for any chunk gets one to itself.
void TreeMemory::openChunk(std::size_t size) {
    constexpr std::size_t kFirstPlace = roundUp(sizeof(Chunk));
    const std::size_t next = std::clamp(size_ * 2, kSmallestChunk, kBiggestChunk);
    const std::size_t chunkSize = std::max(next, kFirstPlace + size);
    void* memory = ::operator new(chunkSize);
    leaveChunk();
    chunk_ = new (memory) Chunk{1};
    used_ = kFirstPlace;
    size_ = chunkSize;
}

void TreeMemory::leaveChunk() noexcept {
    if (chunk_ != nullptr)
        dropUser(chunk_);
    chunk_ = nullptr;
}

void TreeMemory::dropUser(Chunk* chunk) noexcept {
    if (chunk->users.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        chunk->~Chunk();
        ::operator delete(chunk);
    }
}

} // namespace TARVO
