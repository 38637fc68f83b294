// All changes to a scope go through a writer. It touches the file at commit alone, and then replays
// what was recorded on what the file holds at that moment, so that any number of writers in any
// number of processes add to one another's work.
#pragma once

#include "registry/registry_file.h"
#include "registry/registry_key_writer.h"

namespace TARVO {

class TarvoRegistryWriter final : public TarvoBaseImpl<TarvoRegistryWriter, IVaskRegistryWriter> {
  public:
    // `originalRoot` is the scope as it was loaded.
    TarvoRegistryWriter(bool allUsers, Reference<TarvoRegistry> originalRoot);

    Result getKeyWriter(const char16_t* path, IVaskRegistryKeyWriter** key);
    Result getKey(const char16_t* path, IVaskRegistryKey** key);
    Result deleteKey(const char16_t* path);
    Result deleteValue(const char16_t* path, const char16_t* name);
    Result createPMCRegistrar(IVaskPMCRegistrar** registrar);
    Result unregisterPMC(const UUID* uuid);
    Result unregisterPMCLocation(const UUID* uuid, std::int32_t location);
    Result revert();
    Result commit();
    Result registerLibrary(const char16_t* definition);
    Result unregisterLibrary(const UUID* library);
    Result setLibraryLocation(const UUID* library, std::uint32_t location, const char16_t* text);
    Result removeLibraryLocation(const UUID* library, std::uint32_t location);

  private:
    static const IVaskRegistryWriterTable kTable;

    void makeRootKeyWriter();
    Reference<TarvoRegistry> shownRoot() const;
    Result mergeInto(platform::File& file);
    Result stageLibraryFiles();
    Result registerPMCs();
    void retireLibraryFiles();
    void emptyTables();

    const Reference<TarvoRegistry> originalRoot_;
    std::shared_ptr<EditState> state_;
    Reference<TarvoRegistryKeyWriter> rootKeyWriter_;

    // The state that the writer had built up before its first commit, which getKey goes on showing
    // while the key writers stand on the tree that was written. Null until then.
    Reference<TarvoRegistry> workingRoot_;
};

} // namespace TARVO
