#include "core/raw_collection.h"

#include "core/lower_case.h"

namespace TARVO {

constinit const ITarvoCollectionTable TarvoRawCollection::kTable = {
    .addReference = slot<TarvoRawCollection, &TarvoRawCollection::addReference>,
    .release = slot<TarvoRawCollection, &TarvoRawCollection::release>,
    .queryInterface = slot<TarvoRawCollection, &TarvoRawCollection::queryInterface>,
    .getLastError = slot<TarvoRawCollection, &TarvoRawCollection::getLastError>,
    .getItem = slot<TarvoRawCollection, &TarvoRawCollection::getItem>,
    .getItemByName = slot<TarvoRawCollection, &TarvoRawCollection::getItemByName>,
    .getCount = slot<TarvoRawCollection, &TarvoRawCollection::getCount>,
};

TarvoRawCollection::TarvoRawCollection(std::u16string_view name, std::u16string_view description)
    : ReadOnlyNamedVaskBaseImpl(name, description), collection_{me(), &kTable} {
    enterInterface(kITarvoCollectionId, &collection_);
}

Result TarvoRawCollection::getItem(std::int32_t index, IVaskInterface** item) noexcept {
    if (item == nullptr)
        return RC_NULL_POINTER;
    if (index < 0 || static_cast<std::size_t>(index) >= items_.size())
        return RC_NOT_AVAILABLE;
    *item = Reference(items_[static_cast<std::size_t>(index)]).detach();
    return RC_OK;
}

Result TarvoRawCollection::getCount(std::uint32_t* count) noexcept {
    if (count == nullptr)
        return RC_NULL_POINTER;
    *count = static_cast<std::uint32_t>(items_.size());
    return RC_OK;
}

namespace {

std::u16string nameOf(IVaskInterface& item) {
    Reference<IVaskInterface> identification;
    require(item.table->queryInterface(item.me, &kITarvoIdentificationId, identification.out()));
    auto* const named = reinterpret_cast<ITarvoIdentification*>(identification.get());
    tarvo::String name;
    require(named->table->getComponentName(named->me, name.pair()));
    return lowerCase(name.text());
}

// The text of a caller's string, up to its terminator.
std::u16string_view textOf(IVaskString* string) {
    const char16_t* text = nullptr;
    std::uint32_t length = 0;
    if (string != nullptr)
        string->table->get(string->me, &text, &length);
    return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

} // namespace

// The last item of a name is the one that is found.
TarvoRawCollection::Index TarvoRawCollection::indexByName() const {
    Index index;
    for (const auto& item : items_)
        index.insert_or_assign(nameOf(*item), item);
    return index;
}

Result TarvoRawCollection::getItemByName(IVaskString* name, IVaskInterface** item) {
    if (item == nullptr)
        return RC_NULL_POINTER;
    *item = nullptr;
    if (items_.empty())
        return RC_NOT_AVAILABLE;
    if (index_.empty())
        index_ = indexByName();
    const auto found = index_.find(lowerCase(textOf(name)));
    if (found == index_.end())
        return RC_NOT_AVAILABLE;
    *item = Reference(found->second).detach();
    return RC_OK;
}

} // namespace TARVO
