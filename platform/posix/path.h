// Paths as the posix functions take them, and the search for names whose case was not kept. Callers
// store paths that come from systems where case does not count, and some that they lowered
// themselves; so a path that is not there as spelled is looked for component by component.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>

namespace TARVO::platform {

std::string nativePath(std::u16string_view path);
std::u16string fromNativePath(std::string_view path);

struct FoundPath {
    std::string path; // as the disk spells it, as far as it goes; the rest as passed
    bool found = false;
    bool folderFound = false; // all but the last component are there
};

// The exact spelling goes before others, and of those the first in byte order is taken.
FoundPath findPath(const std::string& path);

// Runs a function of the system's on a path, and once more on what findPath finds if the path is
// not there as spelled: so the ordinary way costs one call.
//   function  takes a `const char*`; negative and errno on failure
template <typename Function>
int onPath(const std::string& path, Function function) {
    const int result = function(path.c_str());
    if (result >= 0 || errno != ENOENT) {
        return result;
    }
    const FoundPath other = findPath(path);
    if (!other.found) {
        errno = other.folderFound ? ENOENT : ENOTDIR;
        return result;
    }
    return function(other.path.c_str());
}

} // namespace TARVO::platform
