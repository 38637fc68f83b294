// Changing the registry (registry_writer.h) in the terms of C++, components and type libraries
// included.
#pragma once

#include "catalogue.hpp"
#include "error.hpp"
#include "load.hpp"
#include "reference.hpp"
#include "registrar.hpp"
#include "registry.hpp"
#include "registry_writer.h"
#include "text.hpp"
#include "uuid.hpp"

#include <cstdint>
#include <utility>

namespace tarvo {

enum class Scope : std::uint8_t {
    currentUser = TARVO_SCOPE_CURRENT_USER,
    allUsers = TARVO_SCOPE_ALL_USERS,
};

// A key to change: what is read of it shows the writer's own changes. Belongs to its writer's
// thread. A name or path that can't be one raises Error with RC_INVALID_KEY_NAME.
//
//     tarvo::RegistryWriter writer(scope);
//     const tarvo::RegistryKeyWriter settings = writer.key(u"/example/settings");
//     settings.setInteger(u"port", 8080);
//     settings.create(u"hosts").setString(u"main", u"example.org");
//     settings.deleteValue(u"obsolete");
//     writer.commit();
class RegistryKeyWriter : public detail::KeyReading<IVaskRegistryKeyWriter> {
  public:
    using KeyReading::KeyReading;

    // A key below this one; what is missing on the way is made.
    RegistryKeyWriter create(CText path) const {
        Reference<IVaskRegistryKeyWriter> key;
        require(key_->table->createKey(key_->me, path.get(), key.out()), "createKey");
        return RegistryKeyWriter(std::move(key));
    }

    // A value takes the place of whatever has its name.
    void setString(CText name, CText value) const {
        require(key_->table->setStringValue(key_->me, name.get(), value.get()), "setStringValue");
    }
    void setInteger(CText name, std::int32_t value) const {
        require(key_->table->setIntegerValue(key_->me, name.get(), value), "setIntegerValue");
    }
    void setUuid(CText name, const UUID& value) const {
        require(key_->table->setUUIDValue(key_->me, name.get(), &value), "setUUIDValue");
    }
    void setEmpty(CText name) const {
        require(key_->table->setEmptyValue(key_->me, name.get()), "setEmptyValue");
    }

    // What isn't there is deleted already.
    void deleteKey(CText path) const {
        require(key_->table->deleteKey(key_->me, path.get()), "deleteKey");
    }
    void deleteValue(CText name, CText path = nullptr) const {
        require(key_->table->deleteValue(key_->me, path.get(), name.get()), "deleteValue");
    }
};

// One set of changes to one scope: recorded first, then brought into the file by `commit`. One that
// is destroyed without a commit leaves no trace. Belongs to one thread at a time, with all that
// comes from it. Paths lead from the root and have a separator in front.
//
//     tarvo::RegistryWriter writer(scope);
//     writer.key(u"/example").setString(u"greeting", u"Hello");
//     writer.commit();
class RegistryWriter {
    using Table = IVaskRegistryWriterTable;

  public:
    // For all users the process must be elevated. Waits while another process has the file open.
    // Raises Error with RC_ACCESS_DENIED or RC_UNSPECIFIED.
    explicit RegistryWriter(Scope scope) {
        require(functions().vaskGetRegistryWriter(static_cast<std::uint8_t>(scope), writer_.out()),
                "vaskGetRegistryWriter");
    }

    IVaskRegistryWriter* get() const noexcept { return writer_.get(); }

    // A key to change; what is missing on the way is made. Null is the root.
    RegistryKeyWriter key(CText path = nullptr) const {
        Reference<IVaskRegistryKeyWriter> key;
        call(&Table::getKeyWriter, "getKeyWriter", path.get(), key.out());
        return RegistryKeyWriter(std::move(key));
    }

    void deleteKey(CText path) const { call(&Table::deleteKey, "deleteKey", path.get()); }
    void deleteValue(CText path, CText name) const {
        call(&Table::deleteValue, "deleteValue", path.get(), name.get());
    }

    // Registers a component once it is filled in and committed.
    Registrar createRegistrar() const {
        Reference<IVaskPMCRegistrar> registrar;
        call(&Table::createPMCRegistrar, "createPMCRegistrar", registrar.out());
        return Registrar(std::move(registrar));
    }
    void unregisterComponent(const UUID& uuid) const {
        call(&Table::unregisterPMC, "unregisterPMC", &uuid);
    }
    // And the component as a whole if it has no other location. What a registrar has handed to this
    // writer isn't looked at.
    void unregisterLocation(const UUID& uuid, Location location) const {
        call(&Table::unregisterPMCLocation, "unregisterPMCLocation", &uuid,
             static_cast<std::int32_t>(location));
    }

    // The libraries of a definition file. Raises Error with RC_PARSER_FAILED if the parser is
    // missing or refuses it.
    void registerLibrary(CText definition) const {
        call(&Table::registerLibrary, "registerLibrary", definition.get());
    }
    void unregisterLibrary(const UUID& library) const {
        call(&Table::unregisterLibrary, "unregisterLibrary", &library);
    }
    // Inproc32, Inproc64, COM32 or COM64.
    void setLibraryLocation(const UUID& library, Location location, CText text) const {
        call(&Table::setLibraryLocation, "setLibraryLocation", &library,
             static_cast<std::uint32_t>(location), text.get());
    }
    void removeLibraryLocation(const UUID& library, Location location) const {
        call(&Table::removeLibraryLocation, "removeLibraryLocation", &library,
             static_cast<std::uint32_t>(location));
    }

    // Drops what is recorded. Key writers that come from this one are cut off.
    void revert() const { call(&Table::revert, "revert"); }

    // Brings everything into the file, and waits for others that have it open. Raises Error with the
    // codes of `commit` (registry_writer.h); everything stays recorded then, and the call can be
    // repeated.
    void commit() const { call(&Table::commit, "commit"); }

  private:
    template <class Slot, class... Arguments>
    void call(Slot Table::*slot, const char* name, Arguments... arguments) const {
        require((writer_->table->*slot)(writer_->me, arguments...), name);
    }

    Reference<IVaskRegistryWriter> writer_;
};

} // namespace tarvo
