// What a writer has been told about native components and has not yet carried out.
#pragma once

#include "catalogue/pmc_record.h"
#include "registry/registry_edits.h"

namespace TARVO {

class PMCRegistrations {
  public:
    // `keys` are the changes of the same writer, and outlive this object.
    explicit PMCRegistrations(RegistryEdits& keys) noexcept : keys_(keys) {}

    // Takes a complete registration, in place of an earlier one of the same component.
    void add(const PMCRegistrationRecord& record);

    // As the writer's slots.
    Result unregister(const UUID* uuid);
    Result unregisterLocation(const UUID* uuid, std::int32_t location);

    // Removes and registers in the tree that a commit writes, and publishes in the system registry.
    // Raises the code of what can't be registered.
    void carryOut(TarvoRegistryKeyWriter& root) const;

    void clear() noexcept;

  private:
    using UUIDs = std::set<tarvo::UUID>;

    RegistryEdits& keys_;
    UUIDs removedPMCs_;
    std::map<tarvo::UUID, PMCRegistrationRecord> pendingPMCs_;
    UUIDs removedFrom32BitView_;
    UUIDs removedFrom64BitView_;
};

} // namespace TARVO
