// The type libraries that are registered (library.h) in the terms of C++.
#pragma once

#include "catalogue.hpp"
#include "collection.hpp"
#include "error.hpp"
#include "identifiers.h"
#include "library.h"
#include "load.hpp"
#include "reference.hpp"
#include "text.hpp"
#include "uuid.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace tarvo {

// One type library as it was when it was found. Any thread may use it.
//
//     for (const tarvo::TypeLibrary& library : tarvo::TypeLibraries().all())
//         std::cout << tarvo::toUtf8(library.name()) << ' ' << tarvo::toUtf8(library.version())
//                   << '\n';
class TypeLibrary {
    using Table = IVaskLibraryDetailsTable;

  public:
    using Interface = IVaskLibraryDetails;
    static constexpr const TarvoUUID& kInterfaceId = kIVaskLibraryDetailsId;

    explicit TypeLibrary(Reference<Interface> details) noexcept : details_(std::move(details)) {}

    Interface* get() const noexcept { return details_.get(); }

    UUID uuid() const {
        UUID uuid;
        require(details_->table->getUUID(details_->me, &uuid), "getUUID");
        return uuid;
    }
    std::u16string name() const { return text(&Table::getName, "getName"); }
    std::u16string version() const { return text(&Table::getVersion, "getVersion"); }

    // The full path of the definition. Nobody has looked whether the file is still there.
    std::u16string definitionPath() const {
        return text(&Table::getDefinitionPath, "getDefinitionPath");
    }

    // Where its code lies; nothing if that isn't set.
    std::optional<std::u16string> location(Location location) const {
        String text;
        const TarvoResult result = details_->table->getLocation(
            details_->me, static_cast<std::int32_t>(location), text.pair());
        if (result == RC_NOT_AVAILABLE)
            return std::nullopt;
        require(result, "getLocation");
        return std::move(text.text());
    }

  private:
    template <class Slot>
    std::u16string text(Slot Table::*slot, const char* call) const {
        String text;
        require((details_->table->*slot)(details_->me, text.pair()), call);
        return std::move(text.text());
    }

    Reference<Interface> details_;
};

// The libraries of both scopes, as the files held them when the object was made. Any thread may use
// it.
//
//     const tarvo::TypeLibraries libraries;
//     if (const auto categories = libraries.find(u"ComponentCategories"))
//         std::cout << tarvo::toUtf8(categories->definitionPath()) << '\n';
class TypeLibraries {
    using Table = IVaskLibraryEnumeratorTable;

  public:
    // Waits while another process writes a registry file.
    TypeLibraries() {
        require(functions().vaskGetLibraryEnumerator(enumerator_.out()),
                "vaskGetLibraryEnumerator");
    }

    std::optional<TypeLibrary> find(const UUID& uuid) const {
        return found(&Table::getLibraryByUUID, "getLibraryByUUID", &uuid);
    }
    // By its name, spelled exactly.
    std::optional<TypeLibrary> find(CText name) const {
        return found(&Table::getLibraryByName, "getLibraryByName", name.get());
    }
    // The one that defines an interface.
    std::optional<TypeLibrary> ofInterface(const UUID& interfaceId) const {
        return found(&Table::getLibraryOfInterface, "getLibraryOfInterface", &interfaceId);
    }

    // In ascending order of their identifiers.
    Collection<TypeLibrary> all() const {
        Reference<ITarvoCollection> libraries;
        require(enumerator_->table->getAllLibraries(enumerator_->me, libraries.out()),
                "getAllLibraries");
        return Collection<TypeLibrary>(std::move(libraries));
    }

  private:
    template <class Slot, class Wanted>
    std::optional<TypeLibrary> found(Slot Table::*slot, const char* call, Wanted wanted) const {
        Reference<IVaskLibraryDetails> details;
        const TarvoResult result =
            (enumerator_->table->*slot)(enumerator_->me, wanted, details.out());
        if (result == RC_NOT_AVAILABLE)
            return std::nullopt;
        require(result, call);
        return TypeLibrary(std::move(details));
    }

    Reference<IVaskLibraryEnumerator> enumerator_;
};

} // namespace tarvo
