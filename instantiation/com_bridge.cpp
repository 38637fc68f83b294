#include "instantiation/com_bridge.h"

#include "core/environment.h"
#include "instantiation/entry_point.h"
#include "tarvo/result.h"

#include <mutex>

namespace TARVO {

Result createThroughCOMBridge(const UUID& uuid, IVaskInterface** instance) {
    static std::mutex mutex;
    static vaskCreateObjectFunction* entryPoint = nullptr;
    const std::lock_guard lock(mutex);
    if (entryPoint == nullptr)
        entryPoint = loadEntryPoint(moduleFolder() + u"MORVEN.dll");
    return entryPoint != nullptr ? entryPoint(&uuid, instance) : RC_CANNOT_CREATE;
}

} // namespace TARVO
