// What the two kinds of registration details have in common: T is the class for native components
// or that for COM classes, and has a member for each slot that isn't here.
#pragma once

#include "core/object.h"
#include "core/uuid.h"
#include "instantiation/creation.h"
#include "tarvo/catalogue.h"

#include <algorithm>
#include <vector>

namespace TARVO {

template <class T>
class PMCRegistrationDetailsImpl : public ReadOnlyNamedVaskBaseImpl<T, UUIDText> {
    using Base = ReadOnlyNamedVaskBaseImpl<T, UUIDText>;

  public:
    IVaskPMCRegistrationDetails* details() noexcept { return &details_; }
    const UUID& uuid() const noexcept { return uuid_; }

    Result getUUID(UUID* uuid) noexcept {
        if (uuid == nullptr)
            return RC_NULL_POINTER;
        *uuid = uuid_;
        return RC_OK;
    }

    Result createInstance(std::uint32_t flags, IVaskInterface** instance) {
        return TARVO::createInstance(details_, flags, instance);
    }

  protected:
    explicit PMCRegistrationDetailsImpl(const UUID& uuid)
        : Base(uuid), details_{this->me(), &kTable}, uuid_(uuid) {
        this->enterInterface(kIVaskPMCRegistrationDetailsId, &details_);
    }

  private:
    static constexpr IVaskPMCRegistrationDetailsTable kTable = {
        .addReference = slot<T, &T::addReference>,
        .release = slot<T, &T::release>,
        .queryInterface = slot<T, &T::queryInterface>,
        .getLastError = slot<T, &T::getLastError>,
        .getName = slot<T, &T::getName>,
        .getDescription = slot<T, &T::getDescription>,
        .getVaskVersion = slot<T, &T::getVaskVersion>,
        .getComponentVersion = slot<T, &T::getComponentVersion>,
        .getVendorURL = slot<T, &T::getVendorURL>,
        .getHelpURL = slot<T, &T::getHelpURL>,
        .getAbout = slot<T, &T::getAbout>,
        .getUUID = slot<T, &T::getUUID>,
        .getProgId = slot<T, &T::getProgId>,
        .getCategories = slot<T, &T::getCategories>,
        .isInCategory = slot<T, &T::isInCategory>,
        .getLocations = slot<T, &T::getLocations>,
        .getLocation = slot<T, &T::getLocation>,
        .isLocationAllUsers = slot<T, &T::isLocationAllUsers>,
        .getFlags = slot<T, &T::getFlags>,
        .createInstance = slot<T, &T::createInstance>,
        .getVersionIndependentProgId = slot<T, &T::getVersionIndependentProgId>,
    };

    IVaskPMCRegistrationDetails details_;
    UUID uuid_;
};

// Fills a caller's array with location numbers; that it can't be filled is the caller's own affair.
inline void giveLocations(const std::vector<std::int32_t>& locations, IVaskArray* target) {
    void* elements = nullptr;
    const auto count = static_cast<std::uint32_t>(locations.size());
    if (target->table->resize(target->me, count, &elements) == RC_OK && elements != nullptr)
        std::ranges::copy(locations, static_cast<std::int32_t*>(elements));
}

} // namespace TARVO
