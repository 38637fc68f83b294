// The resource library, which holds every text that the library shows. It stands beside the library
// and is loaded at start, so that texts need no lock afterwards.
#pragma once

#include <cstdint>

namespace TARVO {

// Loads the resource library from the module folder. Its absence is no failure: there are no texts
// then. Runs once, when the library is loaded.
void loadResourceLibrary() noexcept;

// The text of an index, valid until the library is unloaded; null where there is none.
const char16_t* resourceText(std::uint32_t index) noexcept;

} // namespace TARVO
