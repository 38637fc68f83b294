#include "platform/module.h"

#include "platform/posix/path.h"

#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>

namespace TARVO::platform {
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

bool isRegularFile(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

ModuleHandle loadModule(std::u16string_view path, ModuleLoadError* error) {
    const auto fail = [error](const char* why) {
        if (error) {
            *error = {0, fromNativePath(why)};
        }
        return nullptr;
    };
    std::string name = nativePath(path);
    if (name.empty()) {
        return fail("no path"); // the loader takes that for the program itself
    }
    const bool isPath = name.find('/') != std::string::npos; // anything else the loader looks for
    if (isPath) {
        name = findPath(name).path;
        if (!isRegularFile(name.c_str())) {
            return fail("no such file"); // a pipe would have us wait
        }
    }
    void* const module = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    return module ? module : fail(dlerror());
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

} // namespace TARVO::platform
