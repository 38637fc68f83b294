// Files that should be there.
#pragma once

#include "platform/file.h"
#include "platform/folder.h"

#include <string_view>

namespace tool {

// Whether a missing file may count as removed: its folder is there. Where that is missing too, it
// may be on a drive that comes back.
inline bool isGoneForGood(std::u16string_view path) {
    const std::size_t separator = path.find_last_of(u"/\\");
    return separator != std::u16string_view::npos && !TARVO::platform::fileExists(path) &&
           TARVO::platform::folderExists(path.substr(0, separator + 1));
}

} // namespace tool
