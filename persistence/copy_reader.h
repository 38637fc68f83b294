// Copies what a reader shows.
#pragma once

#include "persistence/tree.h"
#include "tarvo/persistence.h"

namespace TARVO {

// Copies the values of the reader, and the nodes with all that is below them, into a new node.
// Raises vask_link_error: what a slot of the reader gave, RC_NULL_POINTER for a null reader,
// RC_END_OF_DATA for an unknown kind, RC_BAD_DATA if nodes go too deep.
void copyReader(TARVOPersistenceNode& target, IVaskPersistReader* source);

} // namespace TARVO
