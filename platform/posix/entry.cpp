#include "platform/entry.h"

namespace {

[[gnu::constructor]] void attach() {
    TARVO::platform::libraryAttached();
}

} // namespace
