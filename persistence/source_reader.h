// How the library reads from a reader that was given to it, which may be anybody's: whatever slot
// fails, it is raised with the reader as its object, so that a last error comes along.
#pragma once

#include "core/link_error.h"
#include "tarvo/persistence.h"
#include "tarvo/reference.hpp"

namespace TARVO {

// Raises RC_NULL_POINTER for a null reader, and any result of the slot but RC_OK.
template <class Slot, class... Arguments>
void callReader(IVaskPersistReader* reader, Slot IVaskPersistReaderTable::*slot,
                Arguments... arguments) {
    if (reader == nullptr)
        throw vask_link_error(RC_NULL_POINTER);
    require((reader->table->*slot)(reader->me, arguments...),
            reinterpret_cast<IVaskInterface*>(reader));
}

// A child node. What a reader that fails leaves in the out-address is nobody's reference.
inline tarvo::Reference<IVaskPersistReader> nodeOf(IVaskPersistReader* reader, IVaskString* name) {
    IVaskPersistReader* node = nullptr;
    callReader(reader, &IVaskPersistReaderTable::GetNode, name, &node);
    return tarvo::Reference<IVaskPersistReader>::adopt(node);
}

} // namespace TARVO
