// A collection (collection.h) as a range of C++.
#pragma once

#include "collection.h"
#include "error.hpp"
#include "query.hpp"
#include "reference.hpp"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace tarvo {

// What an enumerator hands out, fixed when it is. Items are made when a loop comes to them. An Item
// holds a Reference<Item::Interface>, for which an object is asked by Item::kInterfaceId. Used by
// one thread at a time.
//
//     const auto components = tarvo::Catalogue().all();
//     std::cout << components.size() << " components\n";
//     for (const auto& component : components)
//         std::cout << tarvo::toUtf8(component.name()) << '\n';
template <class Item>
class Collection {
  public:
    explicit Collection(Reference<ITarvoCollection> collection) noexcept
        : collection_(std::move(collection)) {}

    ITarvoCollection* get() const noexcept { return collection_.get(); }

    std::size_t size() const {
        std::uint32_t count = 0;
        require(collection_->table->getCount(collection_->me, &count), "getCount", *collection_);
        return count;
    }

    // Raises Error with RC_NOT_AVAILABLE if the index isn't below the size.
    Item operator[](std::size_t index) const {
        constexpr std::size_t kLast = 0x7FFFFFFF; // a larger one wouldn't reach the slot as it is
        Reference<IVaskInterface> item;
        require(index > kLast ? RC_NOT_AVAILABLE
                              : collection_->table->getItem(
                                    collection_->me, static_cast<std::int32_t>(index), item.out()),
                "getItem", *collection_);
        return Item(requireInterface<typename Item::Interface>(item.get(), Item::kInterfaceId));
    }

    class Iterator {
      public:
        using value_type = Item;
        using difference_type = std::ptrdiff_t;

        Iterator() noexcept = default;
        Iterator(const Collection& collection, std::size_t index) noexcept
            : collection_(&collection), index_(index) {}

        Item operator*() const { return (*collection_)[index_]; }
        Iterator& operator++() noexcept {
            ++index_;
            return *this;
        }
        void operator++(int) noexcept { ++index_; }
        bool operator==(const Iterator& other) const noexcept { return index_ == other.index_; }

      private:
        const Collection* collection_ = nullptr;
        std::size_t index_ = 0;
    };

    Iterator begin() const noexcept { return Iterator(*this, 0); }
    Iterator end() const { return Iterator(*this, size()); }

  private:
    Reference<ITarvoCollection> collection_;
};

} // namespace tarvo
