// The two folders below which the library keeps its data, and the little that is needed to make
// folders of its own there.
#pragma once

#include <string>
#include <string_view>

namespace TARVO::platform {

#ifdef _WIN32
inline constexpr char16_t kFolderSeparator = u'\\';
#else
inline constexpr char16_t kFolderSeparator = u'/';
#endif

enum class SpecialFolder {
    commonAppData, // of all users of the machine
    localAppData,  // of the current user
};

// The full path of a folder of the system's, made if need be. Empty if it can't be had.
std::u16string specialFolder(SpecialFolder which);

bool folderExists(std::u16string_view path);

// Makes one folder below an existing one. False also if the name is taken.
bool createFolder(std::u16string_view path);

} // namespace TARVO::platform
