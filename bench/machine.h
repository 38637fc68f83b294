// A machine state of the benchmarks' own, so that they never touch the machine's.
#pragma once

#include <filesystem>

namespace bench {

// The user's registry file; the machine state is made at the first call, which must come before any
// of the library's, and goes with the program.
std::filesystem::path userRegistryFile();

} // namespace bench
