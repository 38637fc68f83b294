// From one interface of an object to another.
#pragma once

#include "base.h"
#include "error.hpp"
#include "reference.hpp"
#include "result.h"

namespace tarvo {

// Another interface of an object, or null if it hasn't got it.
//
//     const auto greeter = tarvo::query<IGreeter>(instance, kIGreeterId);
template <class I, class From>
Reference<I> query(From* object, const TarvoUUID& interfaceId) noexcept {
    IVaskInterface* found = nullptr;
    if (object->table->queryInterface(object->me, &interfaceId, &found) != RC_OK)
        return nullptr;
    return Reference<I>::adopt(reinterpret_cast<I*>(found));
}

// The same, but an object that hasn't got the interface raises Error with what it answered, as a rule
// RC_NO_INTERFACE.
template <class I, class From>
Reference<I> requireInterface(From* object, const TarvoUUID& interfaceId) {
    IVaskInterface* found = nullptr;
    require(object->table->queryInterface(object->me, &interfaceId, &found), "queryInterface",
            *object);
    return Reference<I>::adopt(reinterpret_cast<I*>(found));
}

} // namespace tarvo
