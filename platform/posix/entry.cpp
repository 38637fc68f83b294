#include "platform/entry.h"

namespace {

[[gnu::constructor]] void attach() {
    platform::libraryAttached();
}

} // namespace
