// The registration of one native component, as a registrar fills it in and a writer keeps it.
#pragma once

#include "tarvo/uuid.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace TARVO {

struct PMCRegistrationRecord {
    std::uint32_t flags = 0;
    std::u16string name;
    std::u16string description;
    std::u16string vaskVersion;
    std::u16string componentVersion;
    std::u16string vendorURL;
    std::u16string helpURL;
    std::u16string about;
    tarvo::UUID uuid;
    std::u16string progId;
    std::u16string versionIndependentProgId;
    std::set<tarvo::UUID> categories;
    std::map<std::int32_t, std::u16string> locations;

    bool isComplete() const {
        return !name.empty() && !vaskVersion.empty() && !uuid.isNil() && !locations.empty();
    }
};

} // namespace TARVO
