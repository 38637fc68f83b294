// The changes of one writer to the keys of a scope. They touch the file at commit alone, and are
// then replayed on what the file holds at that moment, so that any number of writers in any number
// of processes add to one another's work.
#pragma once

#include "registry/registry_file.h"
#include "registry/registry_key_writer.h"

#include <functional>

namespace TARVO {

class RegistryEdits {
  public:
    // What is added to the tree that a commit writes, through its root. Raises vask_link_error.
    using Addition = std::function<void(TarvoRegistryKeyWriter& root)>;

    // `originalRoot` is the scope as it was loaded.
    RegistryEdits(bool allUsers, Reference<TarvoRegistry> originalRoot);

    bool allUsers() const noexcept { return state_->allUsers; }

    // The root key, to change it.
    IVaskRegistryKeyWriter& root() noexcept { return *rootKeyWriter_->pair(); }

    // As the writer's slots.
    Result getKeyWriter(const char16_t* path, IVaskRegistryKeyWriter** key);
    Result getKey(const char16_t* path, IVaskRegistryKey** key);
    Result deleteKey(const char16_t* path);
    Result deleteValue(const char16_t* path, const char16_t* name);

    // Drops all changes.
    void revert();

    // Keeps the file's state in a copy beside it. False if that can't be done.
    bool backUp(const std::u16string& path);

    // Brings the changes and the addition into the file, or leaves it as it was; only a failed
    // write changes it all the same. RC_OK, RC_ACCESS_DENIED, RC_BAD_REGISTRY_FILE, RC_UNSPECIFIED.
    Result mergeInto(const std::u16string& path, const Addition& add);

  private:
    void makeRootKeyWriter();
    Reference<TarvoRegistry> shownRoot() const;
    Result mergeInto(platform::File& file, const Addition& add);

    const Reference<TarvoRegistry> originalRoot_;
    std::shared_ptr<EditState> state_;
    Reference<TarvoRegistryKeyWriter> rootKeyWriter_;

    // The state that the writer had built up before its first commit, which getKey goes on showing
    // while the key writers stand on the tree that was written. Null until then.
    Reference<TarvoRegistry> workingRoot_;
};

} // namespace TARVO
