// Modules: loading others by path, and knowing where the one lies that holds this code.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

using ModuleHandle = void*;

// Loads a module and everything it needs, or gives null. A module that is loaded already gets one
// more reference.
ModuleHandle loadModule(std::u16string_view path);

// Why this thread's last loadModule gave null.
struct ModuleLoadError {
    std::uint32_t number; // the system's; 0 where it has none
    std::u16string text;  // the system's; may be empty
};
ModuleLoadError moduleLoadError();

// Null if the module exports no such name.
void* findSymbol(ModuleHandle module, const char* name);

// Gives back what loadModule gave. Null is allowed.
void freeModule(ModuleHandle module);

// The full path of the module that a function or a constant lies in. Empty if it lies in none.
std::u16string modulePathOf(const void* address);

// The full path of the module that holds this code: the library, or the program that it is linked
// into. The same for the life of the process, whatever becomes of the current folder. Empty if it
// can't be had.
std::u16string ownModulePath();

} // namespace platform
