// The places of the slots, as a C++ compiler lays them out, and the names of the service
// interfaces.
#include "layout.h"

#define SERVICE(name) static_assert(std::is_same_v<name, TARVO::TARVO_INTERNAL::name>)

SERVICE(IVaskRegistryKey);
SERVICE(IVaskRegistryKeyWriter);
SERVICE(IVaskRegistryWriter);
SERVICE(IVaskPMCEnumerator);
SERVICE(IVaskPMCRegistrar);
SERVICE(IVaskLibraryEnumerator);
