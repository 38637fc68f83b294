// The system's folders. With TARVO_PLATFORM_ROOT in the environment all of them lie below that
// folder, so that a test or a demonstration has a machine of its own.
#include "platform/folder.h"

#include "platform/posix/path.h"

#include <cstdlib>
#include <string>
#include <sys/stat.h>

namespace platform {
namespace {

constexpr mode_t kEverybody = 0777; // the process's mask takes from it

// The value of a variable; programs that run with another's rights get none.
std::string environmentText(const char* name) {
    const char* value = secure_getenv(name);
    return value ? value : "";
}

bool isAbsolute(std::string_view path) {
    return path.starts_with('/');
}

// Empty if there is no such place. A place relative to the current folder is none: the text is kept
// when that folder changes.
std::string placeOf(SpecialFolder which) {
    const bool isCommon = which == SpecialFolder::commonAppData;
    if (const char* root = secure_getenv("TARVO_PLATFORM_ROOT")) {
        // Never the user's own folders instead.
        return isAbsolute(root) ? std::string{root} + (isCommon ? "/ProgramData" : "/LocalAppData")
                                : "";
    }
    if (isCommon) {
        return "/var/lib";
    }
    if (std::string data = environmentText("XDG_DATA_HOME"); isAbsolute(data)) {
        return data;
    }
    const std::string home = environmentText("HOME");
    return isAbsolute(home) ? home + "/.local/share" : "";
}

bool isFolder(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Makes the folder and those above it that are missing.
bool ensureFolder(const std::string& path) {
    if (isFolder(path)) {
        return true;
    }
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        mkdir(path.substr(0, end).c_str(), kEverybody);
    }
    mkdir(path.c_str(), kEverybody);
    return isFolder(path);
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
    return !place.found && place.folderFound && mkdir(place.path.c_str(), kEverybody) == 0;
}

} // namespace platform
