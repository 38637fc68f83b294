// Modules: loading others by path, and knowing where the one lies that holds this code.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace TARVO::platform {

using ModuleHandle = void*;

// Why a module can't be loaded, as the system says it.
struct ModuleLoadError {
    std::uint32_t number = 0; // 0 where the system has none
    std::u16string text;      // may be empty, and may end in the end of a line
};

// Loads a module and everything it needs, or gives null and, if asked to, tells why. A module that
// is loaded already gets one more reference.
ModuleHandle loadModule(std::u16string_view path, ModuleLoadError* error = nullptr);

// Null if the module exports no such name.
void* findSymbol(ModuleHandle module, const char* name);

// Gives back what loadModule gave. Null is allowed.
void freeModule(ModuleHandle module);

// A module for as long as it is looked at.
class LoadedModule {
  public:
    explicit LoadedModule(std::u16string_view path) : handle_(loadModule(path, &error_)) {}
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule() { freeModule(handle_); }

    explicit operator bool() const { return handle_ != nullptr; }
    const ModuleLoadError& error() const { return error_; }

    // Null if the module exports no such name.
    void* find(const char* name) const { return findSymbol(handle_, name); }

  private:
    ModuleLoadError error_;
    ModuleHandle handle_;
};

// The full path of the module that a function or a constant lies in. Empty if it lies in none.
std::u16string modulePathOf(const void* address);

// The full path of the module that holds this code: the library, or the program that it is linked
// into. The same for the life of the process, whatever becomes of the current folder. Empty if it
// can't be had.
std::u16string ownModulePath();

} // namespace TARVO::platform
