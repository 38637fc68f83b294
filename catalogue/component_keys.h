// The keys of the private registry that tell of native components, as a commit changes them.
#pragma once

#include "catalogue/pmc_record.h"
#include "catalogue/publication.h"
#include "registry/registry_key_writer.h"

#include <string>
#include <vector>

namespace TARVO {

class ComponentKeys {
  public:
    // Makes the keys in which components stand, if need be.
    explicit ComponentKeys(TarvoRegistryKeyWriter& root);

    void remove(const UUID& uuid);

    // Registers a component, over what is known of it: what the record leaves empty stays, and so
    // do further locations. Publishes its class for each location in process. Raises
    // RC_INCOMPLETE_REGISTRATION, RC_INVALID_ARGUMENT (a location that isn't allowed) or the code
    // of a change that was refused.
    void add(const PMCRegistrationRecord& record, ClassPublisher& publisher);

  private:
    void addProgIds(const PMCRegistrationRecord& record);
    void addCategories(const PMCRegistrationRecord& record, TarvoRegistryKeyWriter& pmc);
    void removeProgId(const char16_t* pmc, const char16_t* value);
    void removeFromCategories(const char16_t* pmc);

    Reference<TarvoRegistryKeyWriter> pmcs_;
    Reference<TarvoRegistryKeyWriter> progIds_;
    Reference<TarvoRegistryKeyWriter> categories_;
    std::vector<std::u16string> knownCategories_; // those before this commit
};

} // namespace TARVO
