// Finding COM classes in the system registry, in which a class has a place of its own in each of
// two views. A class that is in both is one component.
#pragma once

#include "catalogue/com_details.h"

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace TARVO {

// Identifiers are well spread already; joining their halves is enough.
struct UUIDHash {
    std::size_t operator()(const tarvo::UUID& uuid) const noexcept {
        const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(uuid);
        const auto [low, high] = halves;
        return low ^ ((low << 6) + high + (low >> 2) + 0x9e3779b9);
    }
};

using UUIDSet = std::unordered_set<tarvo::UUID, UUIDHash>;

// A component that a scan has come upon.
struct FoundPMC {
    tarvo::UUID uuid;
    Reference<IVaskPMCRegistrationDetails> details;
};

template <class T>
FoundPMC foundPMC(T& details) {
    return {details.uuid(), Reference<IVaskPMCRegistrationDetails>::share(details.details())};
}

// The class of a ProgID, if there is one in either view.
std::optional<UUID> classOfProgId(const char16_t* progId, ValueBuffer& buffer);

// The class of an identifier; null if neither view has it, or it can't be used.
Reference<COMPMCRegistrationDetails> findCOMClass(const UUID& uuid, ValueBuffer& buffer);

// Tells whether a class, named by its key below the key of all classes, is wanted.
using IsWanted = std::function<bool(const platform::SystemKey& classes, const char16_t* name,
                                    platform::RegistryView view)>;

// Adds the classes that are wanted, can be used and don't have one of the `hidden` identifiers.
void findCOMClasses(const IsWanted& isWanted, const UUIDSet& hidden, ValueBuffer& buffer,
                    std::vector<FoundPMC>& found);

// Whether a class implements one of some categories.
bool implementsAnyOf(const UUIDSet& wanted, const platform::SystemKey& classes,
                     const char16_t* name, platform::RegistryView view);

} // namespace TARVO
