#include "platform/folder.h"

#include "platform/windows/native_text.h"

#include <array>
#include <shlobj.h>

namespace TARVO::platform {

std::u16string specialFolder(SpecialFolder which) {
    const int identifier =
        which == SpecialFolder::commonAppData ? CSIDL_COMMON_APPDATA : CSIDL_LOCAL_APPDATA;
    std::array<wchar_t, MAX_PATH> path{}; // the length that the function is defined for
    if (!SHGetSpecialFolderPathW(nullptr, path.data(), identifier, TRUE)) {
        return {};
    }
    return fromNativeText(path.data());
}

bool folderExists(std::u16string_view path) {
    const DWORD attributes = GetFileAttributesW(nativeText(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool createFolder(std::u16string_view path) {
    return CreateDirectoryW(nativeText(path).c_str(), nullptr) != 0;
}

} // namespace TARVO::platform
