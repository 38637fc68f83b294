// What happens when the library is loaded, and how it is stopped.
#include "core/resource.h"
#include "platform/entry.h"
#include "tarvo/environment.h"

// All process-wide objects are constants or made at first need; the resource library alone is
// loaded here, so that texts are at hand without a lock ever after. Nothing in this can make the
// load fail.
void platform::libraryAttached() noexcept {
    TARVO::loadResourceLibrary();
}

// No marshaler service can have been started yet, so there is nothing to stop and nothing to wait
// for.
void tarvoTerminate(void) {}
