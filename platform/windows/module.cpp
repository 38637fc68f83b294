#include "platform/module.h"

#include "platform/windows/native_text.h"

// The linker's name for the place where this module is loaded, which is also its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace TARVO::platform {
namespace {

constexpr std::size_t kFirstPathSize = 1024;

HMODULE asHandle(ModuleHandle module) {
    return static_cast<HMODULE>(module);
}

std::u16string pathOf(HMODULE module) {
    std::wstring path(kFirstPathSize, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            return fromNativeText({path.data(), length});
        }
        path.resize(path.size() * 2);
    }
}

std::u16string messageOf(DWORD error) {
    std::wstring text(1024, L'\0');
    const DWORD size =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                       LANG_USER_DEFAULT, text.data(), static_cast<DWORD>(text.size()), nullptr);
    return fromNativeText({text.data(), size});
}

} // namespace

ModuleHandle loadModule(std::u16string_view path, ModuleLoadError* error) {
    const HMODULE module = LoadLibraryW(nativeText(path).c_str());
    if (!module && error) {
        const DWORD number = GetLastError();
        *error = {number, messageOf(number)};
    }
    return module;
}

void* findSymbol(ModuleHandle module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(asHandle(module), name));
}

void freeModule(ModuleHandle module) {
    if (module) {
        FreeLibrary(asHandle(module));
    }
}

std::u16string modulePathOf(const void* address) {
    HMODULE module = nullptr;
    constexpr DWORD kFlags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(kFlags, static_cast<const wchar_t*>(address), &module)) {
        return {};
    }
    return pathOf(module);
}

std::u16string ownModulePath() {
    return pathOf(reinterpret_cast<HMODULE>(&__ImageBase));
}

} // namespace TARVO::platform
