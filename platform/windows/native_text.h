// Text as the Windows functions take and give it.
#pragma once

#include <string>
#include <string_view>
#include <windows.h>

namespace TARVO::platform {

inline std::wstring nativeText(std::u16string_view text) {
    return {text.begin(), text.end()};
}

// The same characters, not copied. Null stays null.
inline const wchar_t* asNative(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}

inline std::u16string fromNativeText(std::wstring_view text) {
    return {text.begin(), text.end()};
}

} // namespace TARVO::platform
