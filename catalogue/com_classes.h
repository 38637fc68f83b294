// Finding COM classes in the system registry, in which a class has a place of its own in each of
// two views. A class that is in both is one component.
#pragma once

#include "catalogue/com_details.h"

#include <functional>
#include <unordered_set>
#include <vector>

namespace TARVO {

using UUIDSet = std::unordered_set<tarvo::UUID>;

// A component that a scan has come upon.
struct FoundPMC {
    tarvo::UUID uuid;
    Reference<IVaskPMCRegistrationDetails> details;
    COMPMCRegistrationDetails* comClass = nullptr; // the same details, if they are those of a class
};

template <class T>
FoundPMC foundPMC(T& details, COMPMCRegistrationDetails* comClass = nullptr) {
    return {details.uuid(), Reference<IVaskPMCRegistrationDetails>::share(details.details()),
            comClass};
}

// The class of a ProgID, if there is one in either view.
std::optional<UUID> classOfProgId(const char16_t* progId, ClassBuffer& buffer);

// The class of an identifier; null if neither view has it, or it can't be used.
Reference<COMPMCRegistrationDetails> findCOMClass(const UUID& uuid, ClassBuffer& buffer);

// Tells whether a class is wanted, by a key below its own.
using IsWanted = std::function<bool(const platform::SystemKey& key)>;

// Adds to the components found so far the classes that have a key at the path `below`, are wanted
// for it, can be used and have another identifier than those.
void findCOMClasses(std::u16string_view below, const IsWanted& isWanted, ClassBuffer& buffer,
                    std::vector<FoundPMC>& found);

} // namespace TARVO
