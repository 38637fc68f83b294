// From a component's registration to a live object.
#pragma once

#include "tarvo/base.h"
#include "tarvo/catalogue.h"

#include <cstdint>

namespace TARVO {

// Creates an instance of the component that the details tell of, whoever implements them. The
// result and what becomes of `instance` are those of the slot `createInstance`. Any thread, but not
// from within an entry point that it runs.
Result createInstance(IVaskPMCRegistrationDetails& details, std::uint32_t flags,
                      IVaskInterface** instance);

} // namespace TARVO
