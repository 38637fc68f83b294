// The type libraries that are registered, as both scopes held them when the enumerator was made.
#pragma once

#include "core/object.h"
#include "registry/registry_key.h"
#include "tarvo/uuid.hpp"
#include "types/library_details.h"

#include <map>
#include <string>

namespace TARVO {

// What a scope has to say of type libraries.
struct LibraryScope {
    std::u16string folder;          // of the definition files, ending in a separator
    Reference<TarvoRegistry> types; // the key of all types; may be null
};

class TarvoLibraryEnumerator final
    : public TarvoBaseImpl<TarvoLibraryEnumerator, IVaskLibraryEnumerator> {
  public:
    TarvoLibraryEnumerator(const LibraryScope& user, const LibraryScope& allUsers);

    Result getLibraryByUUID(const UUID* uuid, IVaskLibraryDetails** details);
    Result getLibraryByName(const char16_t* name, IVaskLibraryDetails** details);
    Result getAllLibraries(ITarvoCollection** libraries);
    Result getLibraryOfInterface(const UUID* interfaceId, IVaskLibraryDetails** details);

  private:
    using Details = Reference<TarvoLibraryDetails>;

    static const IVaskLibraryEnumeratorTable kTable;

    void addUserLibraries(const LibraryScope& user, const LibraryScope& allUsers);
    void addAllUsersLibraries(const LibraryScope& allUsers);
    void add(const UUID& uuid, const TarvoRegistry& key, const std::u16string& folder);

    std::map<tarvo::UUID, Details> librariesByUUID_;
    std::map<std::u16string, Details, std::less<>> librariesByName_;
    Reference<TarvoRegistryKey> interfacesKey_;
};

} // namespace TARVO
