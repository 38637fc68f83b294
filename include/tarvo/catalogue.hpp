// The catalogue of components (catalogue.h) in the terms of C++.
#pragma once

#include "array.hpp"
#include "catalogue.h"
#include "collection.hpp"
#include "creation.hpp"
#include "error.hpp"
#include "identifiers.h"
#include "load.hpp"
#include "reference.hpp"
#include "text.hpp"
#include "uuid.hpp"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tarvo {

// Where a component, or the code of a type library, is to be found.
enum class Location : std::int32_t {
    inproc32 = TARVO_LOCATION_INPROC32,
    inproc64 = TARVO_LOCATION_INPROC64,
    com32 = TARVO_LOCATION_COM32,
    com64 = TARVO_LOCATION_COM64,
    remote = TARVO_LOCATION_REMOTE,
    local = TARVO_LOCATION_LOCAL,
};

// One component, native or a COM class, as it was when it was found. A text that its registration
// lacks is empty. Any thread may use it.
//
//     for (const tarvo::ComponentDetails& component : tarvo::Catalogue().all()) {
//         std::cout << tarvo::toUtf8(component.name()) << '\n';
//         for (const tarvo::Location location : component.locations())
//             std::cout << "  " << tarvo::toUtf8(component.location(location)) << '\n';
//     }
class ComponentDetails {
    using Pair = IVaskPMCRegistrationDetails;
    using Table = IVaskPMCRegistrationDetailsTable;

  public:
    using Interface = Pair;
    static constexpr const TarvoUUID& kInterfaceId = kIVaskPMCRegistrationDetailsId;

    explicit ComponentDetails(Reference<Pair> details) noexcept : details_(std::move(details)) {}

    Pair* get() const noexcept { return details_.get(); }

    UUID uuid() const {
        UUID uuid;
        call(&Table::getUUID, "getUUID", &uuid);
        return uuid;
    }

    std::u16string name() const { return text(&Table::getName, "getName"); }
    std::u16string description() const { return text(&Table::getDescription, "getDescription"); }
    std::u16string vaskVersion() const { return text(&Table::getVaskVersion, "getVaskVersion"); }
    std::u16string version() const {
        return text(&Table::getComponentVersion, "getComponentVersion");
    }
    std::u16string vendorURL() const { return text(&Table::getVendorURL, "getVendorURL"); }
    std::u16string helpURL() const { return text(&Table::getHelpURL, "getHelpURL"); }
    std::u16string about() const { return text(&Table::getAbout, "getAbout"); }
    std::u16string progId() const { return text(&Table::getProgId, "getProgId"); }
    std::u16string versionIndependentProgId() const {
        return text(&Table::getVersionIndependentProgId, "getVersionIndependentProgId");
    }

    // As texts of identifiers.
    std::vector<std::u16string> categories() const {
        StringArray categories;
        call(&Table::getCategories, "getCategories", categories.pair());
        return takeTexts(categories);
    }
    bool isInCategory(const UUID& category) const {
        std::uint32_t result = 0;
        call(&Table::isInCategory, "isInCategory", &category, &result);
        return result != 0;
    }

    std::vector<Location> locations() const {
        ScalarArray<Location> locations;
        call(&Table::getLocations, "getLocations", locations.pair());
        return std::move(locations.elements());
    }

    // A path, an identifier, a URL or a name. Raises Error with RC_NOT_FOUND if the component
    // hasn't got the location.
    std::u16string location(Location location) const {
        String text;
        call(&Table::getLocation, "getLocation", static_cast<std::uint32_t>(location), text.pair());
        return std::move(text.text());
    }

    // Whether a location is registered in the scope of all users alone.
    bool isAllUsers(Location location) const {
        std::uint32_t result = 0;
        call(&Table::isLocationAllUsers, "isLocationAllUsers", static_cast<std::uint32_t>(location),
             &result);
        return result != 0;
    }

    // TARVO_PMC_... or 0.
    std::uint32_t flags() const {
        std::uint32_t flags = 0;
        call(&Table::getFlags, "getFlags", &flags);
        return flags;
    }

    // An instance, without a further look-up; the flags are TARVO_CREATE_... or 0. Raises Error
    // with the codes of createInstance (catalogue.h).
    Reference<IVaskInterface> create(std::uint32_t flags = 0) const {
        IVaskInterface* instance = nullptr;
        const TarvoResult result = details_->table->createInstance(details_->me, flags, &instance);
        return detail::created(result, "createInstance", instance);
    }

  private:
    template <class Slot, class... Arguments>
    void call(Slot Table::*slot, const char* name, Arguments... arguments) const {
        require((details_->table->*slot)(details_->me, arguments...), name, *details_);
    }

    template <class Slot>
    std::u16string text(Slot Table::*slot, const char* name) const {
        String text;
        const TarvoResult result = (details_->table->*slot)(details_->me, text.pair());
        if (result != RC_NOT_FOUND) // a registration made by hand, without what is required
            require(result, name, *details_);
        return std::move(text.text());
    }

    Reference<Pair> details_;
};

// All components that this process can know of. It answers from the private registry as it was when
// the object was made. Used by one thread at a time.
//
//     tarvo::Catalogue catalogue;
//     if (const auto greeter = catalogue.find(u"Example.Greeter"))
//         std::cout << tarvo::toUtf8(greeter->description()) << '\n';
class Catalogue {
  public:
    // Waits while another process writes a registry file. Raises Error with RC_ACCESS_DENIED or
    // RC_UNSPECIFIED if a file can't be read.
    Catalogue() {
        require(functions().vaskGetPMCEnumerator(enumerator_.out()), "vaskGetPMCEnumerator");
    }

    std::optional<ComponentDetails> find(const UUID& uuid) const {
        Reference<IVaskPMCRegistrationDetails> details;
        return found(enumerator_->table->getPMCByUUID(enumerator_->me, &uuid, details.out()),
                     "getPMCByUUID", details);
    }

    // By ProgID, version-dependent or not and without regard to case; not empty.
    std::optional<ComponentDetails> find(CText progId) const {
        Reference<IVaskPMCRegistrationDetails> details;
        return found(
            enumerator_->table->getPMCByProgId(enumerator_->me, progId.get(), details.out()),
            "getPMCByProgId", details);
    }

    // In ascending order of their identifiers.
    Collection<ComponentDetails> all() const {
        Reference<ITarvoCollection> pmcs;
        require(enumerator_->table->getAllPMCs(enumerator_->me, pmcs.out()), "getAllPMCs");
        return Collection<ComponentDetails>(std::move(pmcs));
    }

    // Those that are filed under at least one of the categories.
    Collection<ComponentDetails> inCategories(std::span<const TarvoUUID> categories) const {
        static constexpr TarvoUUID kNone{};
        Reference<ITarvoCollection> pmcs;
        require(enumerator_->table->getPMCsInCategories(
                    enumerator_->me, categories.empty() ? &kNone : categories.data(),
                    static_cast<std::uint32_t>(categories.size()), pmcs.out()),
                "getPMCsInCategories");
        return Collection<ComponentDetails>(std::move(pmcs));
    }

  private:
    static std::optional<ComponentDetails> found(TarvoResult result, const char* call,
                                                 Reference<IVaskPMCRegistrationDetails>& details) {
        if (result == RC_NOT_FOUND)
            return std::nullopt;
        require(result, call);
        return ComponentDetails(std::move(details));
    }

    Reference<IVaskPMCEnumerator> enumerator_;
};

} // namespace tarvo
