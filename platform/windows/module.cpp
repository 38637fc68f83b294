#include "platform/module.h"

#include "platform/windows/native_text.h"

// The linker's name for the place where this module is loaded, which is also its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace platform {
namespace {

constexpr std::size_t kFirstPathSize = 1024;

HMODULE asHandle(ModuleHandle module) {
    return static_cast<HMODULE>(module);
}

} // namespace

ModuleHandle loadModule(std::u16string_view path) {
    return LoadLibraryW(nativeText(path).c_str());
}

void* findSymbol(ModuleHandle module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(asHandle(module), name));
}

void freeModule(ModuleHandle module) {
    if (module) {
        FreeLibrary(asHandle(module));
    }
}

std::u16string ownModulePath() {
    std::wstring path(kFirstPathSize, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase),
                                                path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            return fromNativeText({path.data(), length});
        }
        path.resize(path.size() * 2);
    }
}

} // namespace platform
