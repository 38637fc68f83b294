// The start of the module. The system calls the layer above through here once, when the library is
// loaded. What implements it goes into the shared module alone: a program that links the same code
// as an archive has a start of its own.
#pragma once

namespace TARVO::platform {

// Defined by the layer above. Runs on the loading thread, perhaps under the system's loader lock,
// and after every object with a constructor of its own was made.
void libraryAttached() noexcept;

} // namespace TARVO::platform
