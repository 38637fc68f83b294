// The stream form of saved state: the bytes of a whole tree. Integers and reals are little-endian,
// with nothing between them:
//
//     node   = value count, values, node count, named nodes
//     value  = name, kind, payload of that kind
//     text   = count of UTF-16 units, units
//     array  = count, elements
//
// Every count and kind has 4 bytes. No count is believed before the bytes behind it are there.
#pragma once

#include "core/link_error.h"
#include "persistence/tree.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace TARVO {

// What is wrong with the bytes, and where: the offset of the field that can't be read.
class StreamError : public vask_link_error {
  public:
    StreamError(Result code, std::size_t offset, const char* reason)
        : vask_link_error(code), offset_(offset), reason_(reason) {}

    std::size_t offset() const noexcept { return offset_; }
    const char* reason() const noexcept { return reason_; }

  private:
    std::size_t offset_;
    const char* reason_; // a literal
};

// Reads a node record into an empty root. Bytes behind the record are not looked at. Raises
// StreamError: RC_END_OF_DATA if the bytes are too few or a kind is unknown, RC_BAD_DATA if nodes
// go too deep. The root holds what was read before, which whoever repairs files may want.
void decodeStream(std::span<const std::uint8_t> bytes, TARVOPersistenceNode& root);

// Gives the root of a new tree, or raises the same.
tarvo::Reference<TARVOPersistenceNode> decodeStream(std::span<const std::uint8_t> bytes);

} // namespace TARVO
