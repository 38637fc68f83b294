#include "platform/folder.h"

#include "platform/posix/mode.h"
#include "platform/posix/path.h"
#include "platform/posix/place.h"

#include <string>
#include <sys/stat.h>

namespace TARVO::platform {
namespace {

// Empty if there is no such place.
std::string placeOf(SpecialFolder which) {
    const bool isCommon = which == SpecialFolder::commonAppData;
    if (const auto root = platformRoot()) {
        return root->empty() ? "" : *root + (isCommon ? "/ProgramData" : "/LocalAppData");
    }
    return isCommon ? "/var/lib" : userFolder("XDG_DATA_HOME", ".local/share");
}

} // namespace

std::u16string specialFolder(SpecialFolder which) {
    const std::string path = placeOf(which);
    return !path.empty() && ensureFolder(path) ? fromNativePath(path) : std::u16string{};
}

bool folderExists(std::u16string_view path) {
    return onPath(nativePath(path), [](const char* name) { return isFolder(name) ? 0 : -1; }) == 0;
}

bool createFolder(std::u16string_view path) {
    const FoundPath place = findPath(nativePath(path));
    return !place.found && place.folderFound && mkdir(place.path.c_str(), kFolderMode) == 0;
}

} // namespace TARVO::platform
