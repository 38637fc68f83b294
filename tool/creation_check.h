// What would become of the creation of a component in this process.
#pragma once

#include "tarvo/catalogue.h"
#include "tool/library.h"

#include <cstdint>

namespace tool {

// Prints each step of a creation with these flags, and how it would end.
void checkCreation(const Library& library, IVaskPMCRegistrationDetails& details,
                   std::uint32_t flags);

} // namespace tool
