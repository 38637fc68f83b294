// The hash table in which a node keeps its sub-keys and its values: counted references to entries
// that carry their own names. Open addressing in one flat array, since most tables are small and
// every look-up walks several of them.
#pragma once

#include "registry/folded_name.h"
#include "tarvo/reference.hpp"

#include <cstdint>
#include <memory>
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

    NameTable(const NameTable& other)
        : slots_(other.capacity_ == 0 ? nullptr : std::make_unique<Slot[]>(other.capacity_)),
          count_(other.count_), capacity_(other.capacity_) {
        for (std::uint32_t i = 0; i < capacity_; ++i) {
            slots_[i] = other.slots_[i];
            if (slots_[i].entry != nullptr)
                slots_[i].entry->addReference();
        }
    }

    NameTable& operator=(NameTable other) noexcept {
        std::swap(slots_, other.slots_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
        return *this;
    }

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

    // Puts an entry in, in the place of the one that has its name if there is one.
    void insert(tarvo::Reference<Entry> entry) {
        if (count_ >= capacity_ / 4 * 3)
            grow();
        Slot& slot = slots_[placeOf(entry->name(), entry->hash())];
        if (slot.entry == nullptr)
            ++count_;
        const auto replaced = tarvo::Reference<Entry>::adopt(slot.entry);
        slot.hash = entry->hash();
        slot.entry = entry.detach();
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
        const std::uint32_t mask = capacity_ - 1;
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
        for (std::uint32_t i = 0; i < capacity_; ++i)
            if (slots_[i].entry != nullptr)
                use(*slots_[i].entry);
    }

    // Empties the table and hands the reference on each entry to `take`.
    template <class Take>
    void handOverEach(Take&& take) noexcept {
        count_ = 0;
        for (std::uint32_t i = 0; i < capacity_; ++i)
            if (Entry* entry = std::exchange(slots_[i].entry, nullptr))
                take(entry);
    }

  private:
    static constexpr std::uint32_t kSmallest = 4; // a power of two, as every capacity is

    // The slot that holds the name, or the empty one where it would go.
    std::uint32_t placeOf(std::u16string_view name, std::uint32_t hash) const noexcept {
        const std::uint32_t mask = capacity_ - 1;
        std::uint32_t place = hash & mask;
        while (slots_[place].entry != nullptr &&
               (slots_[place].hash != hash || !isSameName(name, slots_[place].entry->name())))
            place = (place + 1) & mask;
        return place;
    }

    void grow() {
        const std::uint32_t capacity = capacity_ == 0 ? kSmallest : capacity_ * 2;
        auto slots = std::make_unique<Slot[]>(capacity);
        for (std::uint32_t i = 0; i < capacity_; ++i) {
            if (slots_[i].entry == nullptr)
                continue;
            std::uint32_t place = slots_[i].hash & (capacity - 1);
            while (slots[place].entry != nullptr)
                place = (place + 1) & (capacity - 1);
            slots[place] = slots_[i];
        }
        slots_ = std::move(slots);
        capacity_ = capacity;
    }

    std::unique_ptr<Slot[]> slots_;
    std::uint32_t count_ = 0;
    std::uint32_t capacity_ = 0;
};

} // namespace TARVO
