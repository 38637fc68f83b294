// What the benchmark of creations creates: a component with nothing to it, in a library of its own.
#include "bench/creation_component.h"

#include <tarvo/component.hpp>
#include <tarvo/instantiation.h>

namespace {

class Nothing : public tarvo::Component<Nothing> {
  public:
    void* find(const TarvoUUID&) noexcept { return nullptr; }
};

} // namespace

TARVO_ENTRY_POINT TarvoResult vaskCreateObject(const TarvoUUID* uuid, IVaskInterface** instance) {
    return tarvo::createComponent<Nothing>(bench::kNothing, uuid, instance);
}
