// A component as the catalogue tells of it, whatever kind it is.
#pragma once

#include "tarvo/catalogue.h"
#include "tarvo/reference.hpp"
#include "tarvo/uuid.hpp"
#include "tool/library.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

constexpr std::array<std::string_view, 6> kLocationNames = {"Inproc32", "Inproc64", "COM32",
                                                            "COM64",    "Remote",   "Local"};

struct ComponentLocation {
    std::uint32_t number = 0;
    std::string text;
    bool allUsers = false;
};

struct Component {
    tarvo::UUID uuid;
    std::string name;
    std::string description;
    std::string vaskVersion;
    std::string componentVersion;
    std::string vendorURL;
    std::string helpURL;
    std::string about;
    std::string progId;
    std::string versionIndependentProgId;
    std::vector<std::string> categories;
    std::vector<ComponentLocation> locations;
    std::uint32_t flags = 0;

    bool isCOMClass() const;
    bool allUsers() const { return !locations.empty() && locations.front().allUsers; }
};

using Details = tarvo::Reference<IVaskPMCRegistrationDetails>;

Component describeComponent(IVaskPMCRegistrationDetails& details);

// All that the library finds now. It must outlive this object.
class Catalogue {
  public:
    explicit Catalogue(const Library& library);

    std::vector<Component> all() const;
    std::vector<Component> inCategory(const tarvo::UUID& category) const;

    // By identifier or ProgID. Raises Failure if there is no such component.
    Details find(const std::string& component) const;

  private:
    tarvo::Reference<IVaskPMCEnumerator> enumerator_;
};

} // namespace tool
