// The list that enumerators hand out. Whoever makes it fills it before anybody else sees it; from
// then on it can only be read.
#pragma once

#include "core/object.h"
#include "tarvo/collection.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TARVO {

class TarvoRawCollection final : public ReadOnlyNamedVaskBaseImpl<TarvoRawCollection> {
  public:
    // `name` is the list's own.
    explicit TarvoRawCollection(std::u16string_view name, std::u16string_view description = {});

    void reserve(std::size_t count) { items_.reserve(count); }
    void append(Reference<IVaskInterface> item) { items_.push_back(std::move(item)); }

    ITarvoCollection* collection() noexcept { return &collection_; }

    Result getItem(std::int32_t index, IVaskInterface** item) noexcept;
    Result getItemByName(IVaskString* name, IVaskInterface** item);
    Result getCount(std::uint32_t* count) noexcept;

  private:
    using Index = std::unordered_map<std::u16string, Reference<IVaskInterface>>;

    static const ITarvoCollectionTable kTable;

    Index indexByName() const;

    ITarvoCollection collection_;
    Index index_; // by lower-cased name; empty until the first look-up by name
    std::vector<Reference<IVaskInterface>> items_;
};

} // namespace TARVO
