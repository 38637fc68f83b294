// Writes the stream form of saved state, which the library only reads.
#pragma once

#include "persistence/tree.h"

#include <cstdint>
#include <vector>

namespace tool {

// The bytes of a stream payload, header included, that hold the tree. The same tree always gives
// the same bytes.
std::vector<std::uint8_t> encodeStream(const TARVO::TARVOPersistenceNode& root);

} // namespace tool
