#include "platform/module.h"

#include "platform/posix/path.h"

#include <array>
#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>

namespace platform {
namespace {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

// The loader keeps the name by which it found the module, which may be relative to the folder that
// was current then. It keeps none for the program itself.
std::u16string resolveOwnPath() {
    Dl_info information;
    link_map* loaded = nullptr;
    void* const here = reinterpret_cast<void*>(&resolveOwnPath);
    if (!dladdr1(here, &information, reinterpret_cast<void**>(&loaded), RTLD_DL_LINKMAP)) {
        return {};
    }
    const char* name = *loaded->l_name ? loaded->l_name : "/proc/self/exe";
    const std::unique_ptr<char, FreeText> path{realpath(name, nullptr)};
    return path ? fromNativePath(path.get()) : std::u16string{};
}

const std::u16string& storedOwnPath() {
    static const std::u16string path = resolveOwnPath();
    return path;
}

// While the module is being loaded, the folder that was current at the call is still current.
[[gnu::constructor]] void resolveAtLoad() {
    storedOwnPath();
}

// Without a destructor of the thread's: it would keep this module loaded when its last user has let
// go of it, until an exit routine of the module's own frees another one and this one under itself.
thread_local std::array<char, 1024> lastError{};

void noteError(std::string_view text) {
    lastError[text.copy(lastError.data(), lastError.size() - 1)] = '\0';
}

bool isRegularFile(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

ModuleHandle loadModule(std::u16string_view path) {
    std::string name = nativePath(path);
    if (name.empty()) {
        return nullptr; // the loader takes that for the program itself
    }
    const bool isPath = name.find('/') != std::string::npos; // anything else the loader looks for
    if (isPath) {
        name = findPath(name).path;
        if (!isRegularFile(name.c_str())) {
            noteError("no such file");
            return nullptr; // a pipe would have us wait
        }
    }
    void* const module = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        noteError(dlerror());
    }
    return module;
}

ModuleLoadError moduleLoadError() {
    return {0, fromNativePath(lastError.data())};
}

void* findSymbol(ModuleHandle module, const char* name) {
    return dlsym(module, name);
}

void freeModule(ModuleHandle module) {
    if (module) {
        dlclose(module);
    }
}

std::u16string modulePathOf(const void* address) {
    Dl_info information;
    if (!dladdr(address, &information)) {
        return {};
    }
    const std::unique_ptr<char, FreeText> path{realpath(information.dli_fname, nullptr)};
    return path ? fromNativePath(path.get()) : std::u16string{};
}

std::u16string ownModulePath() {
    return storedOwnPath();
}

} // namespace platform
