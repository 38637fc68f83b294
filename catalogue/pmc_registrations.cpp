#include "catalogue/pmc_registrations.h"

#include "catalogue/component_keys.h"
#include "catalogue/names.h"
#include "catalogue/publication.h"
#include "core/uuid.h"

namespace TARVO {

using platform::RegistryView;

void PMCRegistrations::add(const PMCRegistrationRecord& record) {
    pendingPMCs_.insert_or_assign(record.uuid, record);
}

Result PMCRegistrations::unregister(const UUID* uuid) {
    if (uuid == nullptr)
        return RC_NULL_POINTER;
    if (tarvo::UUID(*uuid).isNil())
        return RC_INVALID_ARGUMENT;
    for (UUIDs* table : {&removedPMCs_, &removedFrom32BitView_, &removedFrom64BitView_})
        table->insert(*uuid);
    pendingPMCs_.erase(*uuid);
    return RC_OK;
}

namespace {

bool hasLocationBeside(IVaskRegistryKey& key, const char16_t* location) {
    std::uint32_t type = 0;
    for (const char16_t* other : kLocationNames)
        if (other != location && key.table->getValueType(key.me, other, nullptr, &type) == RC_OK)
            return true;
    return false;
}

} // namespace

Result PMCRegistrations::unregisterLocation(const UUID* uuid, std::int32_t location) {
    if (isCOMLocation(location))
        return RC_INVALID_ARGUMENT;
    if (uuid == nullptr)
        return RC_NULL_POINTER;
    if (tarvo::UUID(*uuid).isNil() || !isLocation(location))
        return RC_INVALID_ARGUMENT;

    const std::u16string path =
        std::u16string(u"/").append(kPMCsKey).append(u"/").append(UUIDText(*uuid).view());
    Reference<IVaskRegistryKey> key;
    if (keys_.getKey(path.c_str(), key.out()) != RC_OK)
        return RC_OK;
    const char16_t* const name = kLocationNames[static_cast<std::size_t>(location)];
    if (!hasLocationBeside(*key, name))
        return unregister(uuid);
    keys_.deleteValue(path.c_str(), name);
    if (location == TARVO_LOCATION_INPROC32)
        removedFrom32BitView_.insert(*uuid);
    if (location == TARVO_LOCATION_INPROC64)
        removedFrom64BitView_.insert(*uuid);
    return RC_OK;
}

// What is removed goes first: a component that was removed and then registered is there in the end.
void PMCRegistrations::carryOut(TarvoRegistryKeyWriter& root) const {
    platform::RegistryBatch publication;
    for (const UUID& uuid : removedFrom32BitView_)
        removeClass(uuid, RegistryView::view32);
    for (const UUID& uuid : removedFrom64BitView_)
        removeClass(uuid, RegistryView::view64);
    if (removedPMCs_.empty() && pendingPMCs_.empty())
        return;
    ComponentKeys keys(root);
    for (const UUID& uuid : removedPMCs_)
        keys.remove(uuid);
    ClassPublisher publisher(keys_.allUsers());
    for (const auto& [uuid, record] : pendingPMCs_)
        keys.add(record, publisher);
}

void PMCRegistrations::clear() noexcept {
    for (UUIDs* table : {&removedPMCs_, &removedFrom32BitView_, &removedFrom64BitView_})
        table->clear();
    pendingPMCs_.clear();
}

} // namespace TARVO
