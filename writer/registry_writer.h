// The registry writer as callers have it: changes to keys, registrations of components and those of
// type libraries, which one commit brings into the file together. Each of the three is a part with
// a folder of its own; here they meet.
#pragma once

#include "catalogue/pmc_registrations.h"
#include "registry/registry_edits.h"
#include "types/library_registration.h"

namespace TARVO {

class TarvoRegistryWriter final : public TarvoBaseImpl<TarvoRegistryWriter, IVaskRegistryWriter> {
  public:
    // `originalRoot` is the scope as it was loaded.
    TarvoRegistryWriter(bool allUsers, Reference<TarvoRegistry> originalRoot);

    Result getKeyWriter(const char16_t* path, IVaskRegistryKeyWriter** key) {
        return keys_.getKeyWriter(path, key);
    }
    Result getKey(const char16_t* path, IVaskRegistryKey** key) { return keys_.getKey(path, key); }
    Result deleteKey(const char16_t* path) { return keys_.deleteKey(path); }
    Result deleteValue(const char16_t* path, const char16_t* name) {
        return keys_.deleteValue(path, name);
    }

    Result createPMCRegistrar(IVaskPMCRegistrar** registrar);
    Result unregisterPMC(const UUID* uuid) { return components_.unregister(uuid); }
    Result unregisterPMCLocation(const UUID* uuid, std::int32_t location) {
        return components_.unregisterLocation(uuid, location);
    }

    Result revert();
    Result commit();

    Result registerLibrary(const char16_t* definition) {
        return libraries_.registerLibrary(keys_.root(), definition);
    }
    Result unregisterLibrary(const UUID* library) {
        return libraries_.unregisterLibrary(keys_.root(), library);
    }
    Result setLibraryLocation(const UUID* library, std::uint32_t location, const char16_t* text) {
        return TARVO::setLibraryLocation(keys_.root(), library, location, text);
    }
    Result removeLibraryLocation(const UUID* library, std::uint32_t location) {
        return TARVO::removeLibraryLocation(keys_.root(), library, location);
    }

  private:
    static const IVaskRegistryWriterTable kTable;

    RegistryEdits keys_;
    PMCRegistrations components_;
    LibraryRegistrations libraries_;
};

} // namespace TARVO
