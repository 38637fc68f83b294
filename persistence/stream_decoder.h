// The stream form of saved state: the bytes of a whole tree. Integers and reals are little-endian,
// with nothing between them:
//
//     header = the mark, a version of 1 byte, 4 bytes that nobody reads; then the root node
//     node   = value count, values, node count, named nodes
//     value  = name, kind, payload of that kind
//     text   = count of UTF-16 units, units
//     array  = count, elements
//
// Every count and kind has 4 bytes. No count is believed before the bytes behind it are there.
#pragma once

#include "core/link_error.h"
#include "persistence/tree.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
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

constexpr std::array<std::uint8_t, 7> kStreamMark = {'M', 'O', 'R', 'V', 'E', 'N', 0};
constexpr std::uint8_t kStreamVersion = 1;
constexpr std::size_t kStreamHeaderSize = kStreamMark.size() + 1 + 4;

// Gives the root's record in a payload, or nothing if the bytes are a component's own: without the
// mark, or of version 0. Raises StreamError: RC_FORMAT_TOO_NEW, or RC_END_OF_DATA if the header is
// cut short.
std::optional<std::span<const std::uint8_t>> nodeRecordOf(std::span<const std::uint8_t> payload);

// Reads a node record and gives the root of a new tree. Bytes behind the record are not looked at.
// Raises StreamError: RC_END_OF_DATA if the bytes are too few or a kind is unknown, RC_BAD_DATA if
// nodes go too deep.
tarvo::Reference<TARVOPersistenceNode> decodeStream(std::span<const std::uint8_t> record);

// The same into an empty root, which holds what there is before the damage when it raises.
void decodeStreamUpToDamage(std::span<const std::uint8_t> record, TARVOPersistenceNode& root);

} // namespace TARVO
