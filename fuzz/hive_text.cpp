// The reader of hives on arbitrary bytes. What it takes must come back from its own writing as it
// was, whether or not that was in its own spelling.
#include "platform/posix/hive_text.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::u16string_view kRoot = u"HKEY_CURRENT_USER";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TARVO::platform::HiveTree tree;
    if (!readHive({reinterpret_cast<const char*>(data), size}, kRoot, tree)) {
        return 0;
    }
    const std::string written = writeHive(*tree.root(), kRoot);
    TARVO::platform::HiveTree again;
    if (!readHive(written, kRoot, again) || writeHive(*again.root(), kRoot) != written) {
        std::fprintf(stderr, "Not read as it was written:\n%s", written.c_str());
        std::abort();
    }
    return 0;
}
