// How the library reads from a reader that was given to it, which may be anybody's: whatever slot
// fails, it is raised with the reader as its object, so that a last error comes along.
#pragma once

#include "core/link_error.h"
#include "tarvo/persistence.h"

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

} // namespace TARVO
