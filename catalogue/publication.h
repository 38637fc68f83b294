// The publication of native components in the system registry, where a host that knows only COM
// finds them as classes. What can't be published is left out without a word: the component stands
// in the private registry all the same.
#pragma once

#include "catalogue/pmc_record.h"
#include "platform/system_registry.h"

namespace TARVO {

// Publishes for one commit, whose scope decides where.
class ClassPublisher {
  public:
    explicit ClassPublisher(bool allUsers) noexcept : allUsers_(allUsers) {}

    // Publishes a component's class in one of the two views.
    void publish(const PMCRegistrationRecord& record, platform::RegistryView view);

  private:
    const platform::SystemKey& classesIn(platform::RegistryView view);

    bool allUsers_;
    platform::SystemKey classes32_; // kept open from the first publication in the view
    platform::SystemKey classes64_;
};

// Removes a class and its ProgIDs from a view, for the user and for the machine, whoever put them
// there.
void removeClass(const UUID& uuid, platform::RegistryView view);

} // namespace TARVO
