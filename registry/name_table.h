// The hash table in which a node keeps its sub-keys and its values: counted references to entries
// that carry their own names. Open addressing in one flat array, since most tables are small and
// every look-up walks several of them.
#pragma once

#include "registry/folded_name.h"
#include "registry/tree_memory.h"
#include "tarvo/reference.hpp"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace TARVO {

// Entry has `name()` (folded), `hash()` (of that name), `addReference()` and `release()`.
// Whoever changes a table owns it alone; reading is safe from any thread meanwhile nobody changes
// it.
template <class Entry>
class NameTable {
  public:
    NameTable() noexcept = default;

    NameTable(const NameTable&) = delete;
    NameTable& operator=(const NameTable&) = delete;

    ~NameTable() {
        handOverEach([](Entry* entry) { entry->release(); });
    }

    std::uint32_t size() const noexcept { return count_; }

    // The entry of a name, in whatever case it is given; null if there is none.
    Entry* find(std::u16string_view name) const noexcept {
        return count_ == 0 ? nullptr : find(name, hashOfName(name));
    }

    Entry* find(std::u16string_view name, std::uint32_t hash) const noexcept {
        if (count_ == 0)
            return nullptr;
        return slots_[placeOf(name, hash)];
    }

    // Fills an empty table with the entries of another.
    void copyFrom(TreeMemory& memory, const NameTable& other) {
        if (other.count_ == 0)
            return;
        slots_ = TreeArray<Entry*>(memory, other.slots_.size());
        std::ranges::copy(other.slots_, slots_.begin());
        count_ = other.count_;
        forEach([](Entry& entry) { entry.addReference(); });
    }

    // Puts an entry in, in the place of the one that has its name if there is one.
    void insert(TreeMemory& memory, tarvo::Reference<Entry> entry) {
        Entry*& slot = makeRoom(memory, entry->name(), entry->hash());
        if (slot == nullptr)
            ++count_;
        const auto replaced = tarvo::Reference<Entry>::adopt(slot);
        slot = entry.detach();
    }

    // Takes out the entry of a name, if there is one.
    void remove(std::u16string_view name) noexcept {
        if (count_ == 0)
            return;
        std::uint32_t gap = placeOf(name, hashOfName(name));
        if (slots_[gap] == nullptr)
            return;
        const auto removed = tarvo::Reference<Entry>::adopt(slots_[gap]);
        --count_;
        // Entries that a search would no longer reach across the gap move into it.
        const std::uint32_t mask = slots_.size() - 1;
        for (std::uint32_t place = (gap + 1) & mask; slots_[place] != nullptr;
             place = (place + 1) & mask) {
            const std::uint32_t distance = (place - slots_[place]->hash()) & mask;
            if (distance >= ((place - gap) & mask)) {
                slots_[gap] = slots_[place];
                gap = place;
            }
        }
        slots_[gap] = nullptr;
    }

    // Calls `use` with each entry, in no particular order.
    template <class Use>
    void forEach(Use&& use) const {
        for (Entry* const entry : slots_)
            if (entry != nullptr)
                use(*entry);
    }

    // Empties the table and hands the reference on each entry to `take`.
    template <class Take>
    void handOverEach(Take&& take) noexcept {
        count_ = 0;
        for (Entry*& slot : slots_)
            if (Entry* entry = std::exchange(slot, nullptr))
                take(entry);
    }

  private:
    // Powers of two, as every capacity is. Tables of few entries are usual, and of about a dozen.
    static constexpr std::uint32_t kSmallest = 4;
    static constexpr std::uint32_t kSecond = 16;

    // The slot that holds the name, or the empty one where it would go.
    std::uint32_t placeOf(std::u16string_view name, std::uint32_t hash) const noexcept {
        const std::uint32_t mask = slots_.size() - 1;
        std::uint32_t place = hash & mask;
        while (slots_[place] != nullptr &&
               (slots_[place]->hash() != hash || !isSameName(name, slots_[place]->name())))
            place = (place + 1) & mask;
        return place;
    }

    // The same with room for one entry more.
    Entry*& makeRoom(TreeMemory& memory, std::u16string_view name, std::uint32_t hash) {
        if (count_ >= slots_.size() / 4 * 3)
            grow(memory);
        return slots_[placeOf(name, hash)];
    }

    void grow(TreeMemory& memory) {
        const std::uint32_t size = slots_.size();
        const std::uint32_t capacity = size == 0 ? kSmallest : std::max(kSecond, size * 2);
        TreeArray<Entry*> slots(memory, capacity);
        for (Entry* const entry : slots_) {
            if (entry == nullptr)
                continue;
            std::uint32_t place = entry->hash() & (capacity - 1);
            while (slots[place] != nullptr)
                place = (place + 1) & (capacity - 1);
            slots[place] = entry;
        }
        slots_ = std::move(slots);
    }

    TreeArray<Entry*> slots_;
    std::uint32_t count_ = 0;
};

} // namespace TARVO
