#include "platform/posix/path.h"

#include "platform/posix/ascii_case.h"
#include "platform/text.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <optional>
#include <sys/stat.h>

namespace TARVO::platform {
namespace {

bool equalWithoutCase(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, loweredAscii<char>, loweredAscii<char>);
}

bool isThere(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

// The name in `folder` that equals `name` but for case. An empty folder text is the current folder.
std::optional<std::string> findName(const std::string& folder, std::string_view name) {
    const std::unique_ptr<DIR, CloseFolder> entries{opendir(folder.empty() ? "." : folder.c_str())};
    std::optional<std::string> best;
    if (!entries) {
        return best;
    }
    while (const dirent* entry = readdir(entries.get())) {
        if (equalWithoutCase(entry->d_name, name) && (!best || entry->d_name < *best)) {
            best = entry->d_name;
        }
    }
    return best;
}

} // namespace

std::string nativePath(std::u16string_view path) {
    std::string result;
    appendUtf8(path, result);
    return result;
}

std::u16string fromNativePath(std::string_view path) {
    std::u16string result;
    appendUtf16(path, result);
    return result;
}

FoundPath findPath(const std::string& path) {
    constexpr char separator = '/';
    FoundPath result;
    std::size_t start = 0;
    while (start < path.size()) {
        const std::size_t end = std::min(path.find(separator, start), path.size());
        const std::size_t next = std::min(path.find_first_not_of(separator, end), path.size());
        std::string name = path.substr(start, end - start); // empty in front of a leading separator
        if (!name.empty() && !isThere(result.path + name)) {
            auto otherName = findName(result.path, name);
            if (!otherName) {
                result.path.append(path, start);
                result.folderFound = next == path.size();
                return result;
            }
            name = std::move(*otherName);
        }
        result.path += name;
        result.path.append(path, end, next - end);
        start = next;
    }
    result.found = result.folderFound = !path.empty();
    return result;
}

} // namespace TARVO::platform
