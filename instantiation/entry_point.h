// The entry point that component libraries and the COM bridge share.
#pragma once

#include "platform/module.h"
#include "tarvo/instantiation.h"

#include <string_view>

namespace TARVO {

// Loads a library for good and finds its entry point. Null if it can't be loaded or has none; it is
// given up again then.
inline vaskCreateObjectFunction* loadEntryPoint(std::u16string_view path) {
    const platform::ModuleHandle module = platform::loadModule(path);
    if (module == nullptr)
        return nullptr;
    void* const found = platform::findSymbol(module, "vaskCreateObject");
    if (found == nullptr)
        platform::freeModule(module);
    return reinterpret_cast<vaskCreateObjectFunction*>(found);
}

} // namespace TARVO
