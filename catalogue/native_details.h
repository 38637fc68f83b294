// A native component: a view on its key in the registry, of which nothing is copied. So it answers
// from the state of the registry that its enumerator had.
#pragma once

#include "catalogue/names.h"
#include "catalogue/pmc_details.h"
#include "registry/registry_key.h"

namespace TARVO {

class TarvoPMCRegistrationDetails final
    : public PMCRegistrationDetailsImpl<TarvoPMCRegistrationDetails> {
  public:
    TarvoPMCRegistrationDetails(const UUID& uuid, Reference<TarvoRegistryKey> key);

    Result getName(IVaskString* name) { return read(kName, name); }
    Result getDescription(IVaskString* text) { return readIfAny(kDescription, text); }
    Result getVaskVersion(IVaskString* version) { return read(kVaskVersion, version); }
    Result getComponentVersion(IVaskString* version) {
        return readIfAny(kComponentVersion, version);
    }
    Result getVendorURL(IVaskString* url) { return readIfAny(kVendorURL, url); }
    Result getHelpURL(IVaskString* url) { return readIfAny(kHelpURL, url); }
    Result getAbout(IVaskString* about) { return readIfAny(kAbout, about); }
    Result getProgId(IVaskString* progId);
    Result getCategories(IVaskArray* categories);
    Result isInCategory(const UUID* category, std::uint32_t* result);
    Result getLocations(IVaskArray* locations);
    Result getLocation(std::uint32_t location, IVaskString* text);
    Result isLocationAllUsers(std::uint32_t location, std::uint32_t* result);
    Result getFlags(std::uint32_t* flags);
    Result getVersionIndependentProgId(IVaskString* progId) {
        return readIfAny(kVersionIndependentProgId, progId);
    }

  private:
    Result read(const char16_t* name, IVaskString* text) {
        return key_->getStringValue(name, nullptr, text);
    }

    // Without a report of a text that isn't there or can't be had.
    Result readIfAny(const char16_t* name, IVaskString* text) {
        if (text == nullptr)
            return RC_NULL_POINTER;
        read(name, text);
        return RC_OK;
    }

    Reference<TarvoRegistryKey> key_;
};

} // namespace TARVO
