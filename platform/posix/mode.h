// The rights of files and folders that are made for everybody; the process's mask takes from them.
#pragma once

#include <sys/stat.h>

namespace TARVO::platform {

inline constexpr mode_t kFileMode = 0666;
inline constexpr mode_t kFolderMode = 0777;

} // namespace TARVO::platform
