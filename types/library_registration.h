// How type libraries get into a scope and out of it: a definition is parsed, what it defines is
// written below the key of all types, and its file is noted to be kept beside the registry file.
// All of it waits in the writer for its commit.
#pragma once

#include "tarvo/base.h"
#include "tarvo/registry_writer.h"
#include "types/library_files.h"

#include <cstdint>

namespace TARVO {

class LibraryRegistrations {
  public:
    explicit LibraryRegistrations(bool allUsers) : allUsers_(allUsers) {}

    // As the writer's slots. `root` is the writer's root key.
    Result registerLibrary(IVaskRegistryKeyWriter& root, const char16_t* definition);
    Result unregisterLibrary(IVaskRegistryKeyWriter& root, const UUID* library);

    const LibraryFiles& files() const noexcept { return files_; }
    void clear() noexcept { files_.clear(); }

  private:
    bool allUsers_;
    LibraryFiles files_;
};

// As the writer's slots.
Result setLibraryLocation(IVaskRegistryKeyWriter& root, const UUID* library, std::uint32_t location,
                          const char16_t* text);
Result removeLibraryLocation(IVaskRegistryKeyWriter& root, const UUID* library,
                             std::uint32_t location);

} // namespace TARVO
