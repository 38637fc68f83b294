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
    struct Slot {
        std::uint32_t hash = 0;
        Entry* entry = nullptr;
    };

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
        return slots_[placeOf(name, hash)].entry;
    }

    // Fills an empty table with the entries of another.
    void copyFrom(TreeMemory& memory, const NameTable& other) {
        if (other.count_ == 0)
            return;
        slots_ = TreeArray<Slot>(memory, other.slots_.size());
        std::ranges::copy(other.slots_, slots_.begin());
        count_ = other.count_;
        forEach([](Entry& entry) { entry.addReference(); });
    }

    // Puts an entry in, in the place of the one that has its name if there is one.
    void insert(TreeMemory& memory, tarvo::Reference<Entry> entry) {
        Slot& slot = makeRoom(memory, entry->name(), entry->hash());
        if (slot.entry == nullptr)
            ++count_;
        const auto replaced = tarvo::Reference<Entry>::adopt(slot.entry);
        slot.hash = entry->hash();
        slot.entry = entry.detach();
    }

    // Puts an entry in, unless there is one of its name already.
    bool insertNew(TreeMemory& memory, tarvo::Reference<Entry> entry) {
        Slot& slot = makeRoom(memory, entry->name(), entry->hash());
        if (slot.entry != nullptr)
            return false;
        ++count_;
        slot.hash = entry->hash();
        slot.entry = entry.detach();
        return true;
    }

    // Takes out the entry of a name, if there is one.
    void remove(std::u16string_view name) noexcept {
        if (count_ == 0)
            return;
        std::uint32_t gap = placeOf(name, hashOfName(name));
        if (slots_[gap].entry == nullptr)
            return;
        const auto removed = tarvo::Reference<Entry>::adopt(slots_[gap].entry);
        --count_;
        // Entries that a search would no longer reach across the gap move into it.
        const std::uint32_t mask = slots_.size() - 1;
        for (std::uint32_t place = (gap + 1) & mask; slots_[place].entry != nullptr;
             place = (place + 1) & mask) {
            const std::uint32_t distance = (place - slots_[place].hash) & mask;
            if (distance >= ((place - gap) & mask)) {
                slots_[gap] = slots_[place];
                gap = place;
            }
        }
        slots_[gap] = {};
    }

    // Calls `use` with each entry, in no particular order.
    template <class Use>
    void forEach(Use&& use) const {
        for (const Slot& slot : slots_)
            if (slot.entry != nullptr)
                use(*slot.entry);
    }

    // Empties the table and hands the reference on each entry to `take`.
    template <class Take>
    void handOverEach(Take&& take) noexcept {
        count_ = 0;
        for (Slot& slot : slots_)
            if (Entry* entry = std::exchange(slot.entry, nullptr))
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
        while (slots_[place].entry != nullptr &&
               (slots_[place].hash != hash || !isSameName(name, slots_[place].entry->name())))
            place = (place + 1) & mask;
        return place;
    }

    // The same with room for one entry more.
    Slot& makeRoom(TreeMemory& memory, std::u16string_view name, std::uint32_t hash) {
        if (count_ >= slots_.size() / 4 * 3)
            grow(memory);
        return slots_[placeOf(name, hash)];
    }

    void grow(TreeMemory& memory) {
        const std::uint32_t size = slots_.size();
        const std::uint32_t capacity = size == 0 ? kSmallest : std::max(kSecond, size * 2);
        TreeArray<Slot> slots(memory, capacity);
        for (const Slot& slot : slots_) {
            if (slot.entry == nullptr)
                continue;
            std::uint32_t place = slot.hash & (capacity - 1);
            while (slots[place].entry != nullptr)
                place = (place + 1) & (capacity - 1);
            slots[place] = slot;
        }
        slots_ = std::move(slots);
    }

    TreeArray<Slot> slots_;
    std::uint32_t count_ = 0;
};

} // namespace TARVO
