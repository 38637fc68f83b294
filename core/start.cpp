// What happens when the library is loaded.
#include "core/resource.h"
#include "platform/entry.h"

// Other process-wide objects are constants, empty, or made at first need; the resource library
// alone is loaded here, so that texts are at hand without a lock ever after. Nothing in this can
// make the load fail.
void TARVO::platform::libraryAttached() noexcept {
    TARVO::loadResourceLibrary();
}
