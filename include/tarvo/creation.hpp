// Instances of components (instantiation.h), and the state that is brought into them.
#pragma once

#include "error.hpp"
#include "identifiers.h"
#include "instantiation.h"
#include "load.hpp"
#include "persistence.h"
#include "query.hpp"
#include "reference.hpp"
#include "state_source.hpp"
#include "uuid.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tarvo {

namespace detail {

// What a creation gave. One that failed may have left anything in the place of the instance.
inline Reference<IVaskInterface> created(TarvoResult result, std::string_view call,
                                         IVaskInterface* instance) {
    require(result, call);
    if (instance == nullptr)
        throw Error(RC_CANNOT_CREATE, std::string(call).append(": the component gave no object"));
    return Reference<IVaskInterface>::adopt(instance);
}

} // namespace detail

// An instance of a component; the flags are TARVO_CREATE_... or 0. Any thread may call it, and it may
// wait. Raises Error with the codes of tarvoCreatePMCInstance.
//
//     const auto component = tarvo::createInstance(kGreeterComponentId);
inline Reference<IVaskInterface> createInstance(const UUID& component, std::uint32_t flags = 0) {
    IVaskInterface* instance = nullptr;
    const TarvoResult result = functions().tarvoCreatePMCInstance(&component, flags, &instance);
    return detail::created(result, "tarvoCreatePMCInstance", instance);
}

// The same, as an interface that a host can call.
//
//     const auto greeter = tarvo::create<IGreeter>(kGreeterComponentId, kIGreeterId);
//     tarvo::String greeting;
//     tarvo::require(greeter->table->greet(greeter->me, u"Ada", greeting.pair()), "greet", *greeter);
//     std::cout << tarvo::toUtf8(greeting.text()) << '\n';
template <class I>
Reference<I> create(const UUID& component, const TarvoUUID& interfaceId, std::uint32_t flags = 0) {
    return requireInterface<I>(createInstance(component, flags).get(), interfaceId);
}

// Hands state that was saved through COM, in the transition form, to a component. Raises Error with
// the codes of tarvoDepersistPMCFromTransitionFormat, and with what the component or else the reader
// tells of a failure. Both are borrowed.
inline void loadState(IVaskInterface* instance, IVaskPersistReader* saved) {
    constexpr std::string_view kCall = "tarvoDepersistPMCFromTransitionFormat";
    const TarvoResult result = functions().tarvoDepersistPMCFromTransitionFormat(
        instance, reinterpret_cast<IVaskInterface*>(saved), TARVO_PERSIST_SOURCE_COM,
        TARVO_PERSIST_TARGET_PMC);
    if (result == RC_SEE_LAST_ERROR) {
        auto causes = lastErrorOf(*instance);
        throw Error(result, kCall, causes.empty() ? lastErrorOf(*saved) : std::move(causes));
    }
    require(result, kCall);
}

// The same for a tree in memory.
//
//     auto saved = std::make_shared<tarvo::StateTree>();
//     saved->values[u"TransitionFormat"] = u"Stream";
//     saved->values[u"data"] = savedBytes;
//     tarvo::loadState(instance, std::move(saved));
inline void loadState(IVaskInterface* instance, std::shared_ptr<const StateTree> saved) {
    loadState(instance, offerState(std::move(saved)).get());
}

// State as COM left it, in the form that loadState takes; null if there is none such.
//
//     auto marked = std::make_shared<tarvo::StateTree>();
//     marked->addNode(u"TARVO").values[u"comType"] = u"Stream";
//     marked->values[u"data"] = savedBytes;
//     const auto state = tarvo::transitionFormatOf(tarvo::offerState(marked).get());
//     tarvo::loadState(instance, state.get());
inline Reference<IVaskPersistReader> transitionFormatOf(IVaskPersistReader* saved) {
    IVaskInterface* out = nullptr;
    require(functions().tarvoDepersistFromTransitionFormat(reinterpret_cast<IVaskInterface*>(saved),
                                                           &out, TARVO_PERSIST_SOURCE_COM,
                                                           TARVO_PERSIST_TARGET_PMC),
            "tarvoDepersistFromTransitionFormat");
    if (out == nullptr)
        return nullptr;
    const auto state = Reference<IVaskInterface>::adopt(out);
    return requireInterface<IVaskPersistReader>(state.get(), kIVaskPersistReaderId);
}

} // namespace tarvo
