#include "instantiation/native_library.h"

#include "core/lower_case.h"
#include "instantiation/entry_point.h"
#include "platform/file.h"
#include "tarvo/result.h"

#include <mutex>
#include <string>
#include <unordered_map>

namespace TARVO {

namespace {

class NativeEntryPointCache {
  public:
    Result create(std::u16string_view path, const UUID& uuid, IVaskInterface** instance) {
        const std::lock_guard lock(mutex_);
        vaskCreateObjectFunction* const entryPoint = entryPointOf(std::u16string(path));
        return entryPoint != nullptr ? entryPoint(&uuid, instance) : RC_CANNOT_CREATE;
    }

  private:
    // However a registration spells the path of a library, it is one library.
    static std::u16string normalised(std::u16string_view path) {
        return lowerCase(platform::longPath(path));
    }

    vaskCreateObjectFunction* entryPointOf(std::u16string path) {
        const auto known = bySpelling_.find(path);
        if (known != bySpelling_.end())
            return known->second;
        vaskCreateObjectFunction* const entryPoint = entryPointOfLibrary(normalised(path));
        if (entryPoint != nullptr)
            bySpelling_.emplace(std::move(path), entryPoint);
        return entryPoint;
    }

    vaskCreateObjectFunction* entryPointOfLibrary(std::u16string path) {
        const auto known = byLibrary_.find(path);
        if (known != byLibrary_.end())
            return known->second;
        vaskCreateObjectFunction* const loaded = loadEntryPoint(path);
        if (loaded != nullptr)
            byLibrary_.emplace(std::move(path), loaded);
        return loaded;
    }

    using EntryPoints = std::unordered_map<std::u16string, vaskCreateObjectFunction*>;

    std::mutex mutex_;
    EntryPoints byLibrary_;
    EntryPoints bySpelling_; // the system takes its time to normalise a path
};

} // namespace

Result createFromNativeLibrary(std::u16string_view path, const UUID& uuid,
                               IVaskInterface** instance) {
    // Never destroyed: components may be created until the process has ended.
    static auto& cache = *new NativeEntryPointCache;
    return cache.create(path, uuid, instance);
}

} // namespace TARVO
