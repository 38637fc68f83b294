// Instances of components (instantiation.h), and the state that is brought into them.
#pragma once

#include "error.hpp"
#include "instantiation.h"
#include "load.hpp"
#include "persistence.h"
#include "query.hpp"
#include "reference.hpp"
#include "state_source.hpp"
#include "uuid.hpp"

#include <cstdint>
#include <memory>
#include <utility>

namespace tarvo {

// An instance of a component; the flags are TARVO_CREATE_... or 0. Any thread may call it, and it may
// wait. Raises Error with the codes of tarvoCreatePMCInstance.
//
//     const auto component = tarvo::createInstance(kGreeterComponentId);
inline Reference<IVaskInterface> createInstance(const UUID& component, std::uint32_t flags = 0) {
    Reference<IVaskInterface> instance;
    require(functions().tarvoCreatePMCInstance(&component, flags, instance.out()),
            "tarvoCreatePMCInstance");
    return instance;
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
// the codes of tarvoDepersistPMCFromTransitionFormat, and with what the component tells of a failure.
//
//     auto saved = std::make_shared<tarvo::StateTree>();
//     saved->values[u"TransitionFormat"] = u"Stream";
//     saved->values[u"data"] = savedBytes;
//     tarvo::loadState(instance, std::move(saved));
inline void loadState(IVaskInterface* instance, std::shared_ptr<const StateTree> saved) {
    const auto reader = offerState(std::move(saved));
    require(functions().tarvoDepersistPMCFromTransitionFormat(
                instance, reinterpret_cast<IVaskInterface*>(reader.get()), TARVO_PERSIST_SOURCE_COM,
                TARVO_PERSIST_TARGET_PMC),
            "tarvoDepersistPMCFromTransitionFormat", *instance);
}

// State as COM left it, in the form that loadState and its function take; null if there is none such.
inline Reference<IVaskPersistReader> transitionFormatOf(IVaskPersistReader* saved) {
    IVaskInterface* out = nullptr;
    require(functions().tarvoDepersistFromTransitionFormat(reinterpret_cast<IVaskInterface*>(saved),
                                                           &out, TARVO_PERSIST_SOURCE_COM,
                                                           TARVO_PERSIST_TARGET_PMC),
            "tarvoDepersistFromTransitionFormat");
    return Reference<IVaskPersistReader>::adopt(reinterpret_cast<IVaskPersistReader*>(out));
}

} // namespace tarvo
