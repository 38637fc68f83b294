#include "platform/posix/place.h"

#include "platform/posix/mode.h"

#include <cstdlib>
#include <sys/stat.h>

namespace TARVO::platform {
namespace {

// The value of a variable that is an absolute path, else nothing. Programs that run with another's
// rights get none.
std::string environmentPath(const char* name) {
    const char* value = secure_getenv(name);
    return value && *value == '/' ? value : "";
}

} // namespace

std::optional<std::string> platformRoot() {
    constexpr const char* variable = "TARVO_PLATFORM_ROOT";
    return secure_getenv(variable) ? std::optional{environmentPath(variable)} : std::nullopt;
}

std::string userFolder(const char* variable, const char* nameInHome) {
    if (std::string folder = environmentPath(variable); !folder.empty()) {
        return folder;
    }
    const std::string home = environmentPath("HOME");
    return home.empty() ? home : home + '/' + nameInHome;
}

bool ensureFolder(const std::string& path) {
    if (isFolder(path)) {
        return true;
    }
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        mkdir(path.substr(0, end).c_str(), kFolderMode);
    }
    mkdir(path.c_str(), kFolderMode);
    return isFolder(path);
}

bool isFolder(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace TARVO::platform
