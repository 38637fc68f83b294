// Registering a native component (registrar.h) in the terms of C++.
#pragma once

#include "catalogue.hpp"
#include "error.hpp"
#include "reference.hpp"
#include "registrar.h"
#include "text.hpp"
#include "uuid.hpp"

#include <cstdint>
#include <utility>

namespace tarvo {

// The registration of one component, which comes from a writer and is filled in. Name, version of
// the interface standard, identifier and one location are required. Belongs to its writer's thread.
//
//     const tarvo::RegistryWriter writer(scope);
//     const tarvo::Registrar clock = writer.createRegistrar();
//     clock.setUuid(tarvo::UUID::parse(u"{8a1f4bb0-93d5-4f6c-8a0b-5d2a60c1e7f3}").value());
//     clock.setName(u"Clock");
//     clock.setVaskVersion(u"1.2");
//     clock.setProgId(u"Example.Clock");
//     clock.setLocation(tarvo::Location::inproc64, u"/opt/example/clock.dll");
//     clock.commit();
//     writer.commit();
class Registrar {
    using Table = IVaskPMCRegistrarTable;

  public:
    explicit Registrar(Reference<IVaskPMCRegistrar> registrar) noexcept
        : registrar_(std::move(registrar)) {}

    IVaskPMCRegistrar* get() const noexcept { return registrar_.get(); }

    // Raises Error with RC_INVALID_ARGUMENT if it is all zero.
    void setUuid(const UUID& uuid) const { call(&Table::setUUID, "setUUID", &uuid); }

    void setName(CText name) const { call(&Table::setName, "setName", name.get()); }
    void setDescription(CText text) const {
        call(&Table::setDescription, "setDescription", text.get());
    }
    void setVaskVersion(CText version) const {
        call(&Table::setVaskVersion, "setVaskVersion", version.get());
    }
    void setVersion(CText version) const {
        call(&Table::setComponentVersion, "setComponentVersion", version.get());
    }
    void setVendorURL(CText url) const { call(&Table::setVendorURL, "setVendorURL", url.get()); }
    void setHelpURL(CText url) const { call(&Table::setHelpURL, "setHelpURL", url.get()); }
    void setAbout(CText text) const { call(&Table::setAbout, "setAbout", text.get()); }

    // Not empty, and a name that a key can have. Raises Error with RC_INVALID_ARGUMENT.
    void setProgId(CText progId) const { call(&Table::setProgId, "setProgId", progId.get()); }
    void setVersionIndependentProgId(CText progId) const {
        call(&Table::setVersionIndependentProgId, "setVersionIndependentProgId", progId.get());
    }

    void addCategory(const UUID& category) const {
        call(&Table::addCategory, "addCategory", &category);
    }

    // TARVO_PMC_... or 0.
    void setFlags(std::uint32_t flags) const { call(&Table::setFlags, "setFlags", flags); }

    // A path, a URL or a name, not empty; all locations but COM32 and COM64. Raises Error with
    // RC_INVALID_ARGUMENT.
    void setLocation(Location location, CText text) const {
        call(&Table::setLocation, "setLocation", static_cast<std::int32_t>(location), text.get());
    }

    // Hands the registration to the writer, whose own commit brings it into the file, in place of an
    // earlier one of the component. Raises Error with RC_INCOMPLETE_REGISTRATION if something
    // required is missing.
    void commit() const { call(&Table::commit, "IVaskPMCRegistrar::commit"); }

  private:
    template <class Slot, class... Arguments>
    void call(Slot Table::*slot, const char* name, Arguments... arguments) const {
        require((registrar_->table->*slot)(registrar_->me, arguments...), name);
    }

    Reference<IVaskPMCRegistrar> registrar_;
};

} // namespace tarvo
