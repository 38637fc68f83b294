#include "core/resource.h"

#include "core/environment.h"
#include "platform/module.h"
#include "tarvo/resource.h"

namespace TARVO {

namespace {

// Frees the module when the library goes.
class ResourceLibrary {
  public:
    constexpr ResourceLibrary() = default;
    ResourceLibrary(const ResourceLibrary&) = delete;
    ResourceLibrary& operator=(const ResourceLibrary&) = delete;

    ~ResourceLibrary() {
        getResource_ = nullptr;
        if (module_ != nullptr)
            platform::freeModule(module_);
    }

    void load() {
        module_ = platform::loadModule(moduleFolder() + u"TARVOResource.DLL");
        if (module_ != nullptr)
            getResource_ = reinterpret_cast<getResourceFunction*>(
                platform::findSymbol(module_, "getResource"));
    }

    const char16_t* text(std::uint32_t index) const noexcept {
        return getResource_ != nullptr ? getResource_(index) : nullptr;
    }

  private:
    platform::ModuleHandle module_ = nullptr;
    getResourceFunction* getResource_ = nullptr;
};

constinit ResourceLibrary resourceLibrary;

} // namespace

void loadResourceLibrary() noexcept {
    try {
        resourceLibrary.load();
    } catch (...) {
        return; // nothing may make the load fail: the library stands without texts then
    }
}

const char16_t* resourceText(std::uint32_t index) noexcept {
    return resourceLibrary.text(index);
}

} // namespace TARVO
