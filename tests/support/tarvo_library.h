// The built library as a caller has it: loaded by path, its exports bound by name. Each test
// program is a process of its own, so what the library keeps for the life of a process is fresh in
// each.
#pragma once

#include "platform/module.h"
#include "platform/text.h"
#include "tests/support/text.h"

#include <tarvo/tarvo.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace tests {

class TarvoLibrary {
  public:
    // The library that was built with the test, loaded at the first call and never unloaded.
    static const TarvoLibrary& get() {
        static const TarvoLibrary library(wide(TARVO_TEST_LIBRARY));
        return library;
    }

    explicit TarvoLibrary(const std::u16string& path) : module_(TARVO::platform::loadModule(path)) {
        if (module_ == nullptr) {
            std::cerr << "can't load " << narrow(path) << "\n";
            std::abort();
        }
    }

    // The function of this name; null if the library doesn't export it.
    template <class Function>
    Function* find(const char* name) const {
        return reinterpret_cast<Function*>(TARVO::platform::findSymbol(module_, name));
    }

    TARVO::platform::ModuleHandle module() const { return module_; }

  private:
    TARVO::platform::ModuleHandle module_;
};

} // namespace tests

// An export of the built library: TARVO_CALL(vaskGetRegistryKey)(u"/", &key)
#define TARVO_CALL(name) (*tests::TarvoLibrary::get().find<name##Function>(#name))
