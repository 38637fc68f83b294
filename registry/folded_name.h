// Names of keys and values compare without regard to the case of A to Z, and of these letters
// alone. The store holds folded names only; what a caller passes is folded while it is hashed and
// compared, so that a look-up allocates nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace TARVO {

// The hash of a name as it would be when folded. It differs from process to process, so that no
// file can be made whose names all fall into one place of a table.
std::uint32_t hashOfName(std::u16string_view name) noexcept;

// The same, in less time, for a name that is folded already.
std::uint32_t hashOfFoldedName(std::u16string_view name) noexcept;

// Whether a name, folded, is `stored`, which is folded already.
bool isSameName(std::u16string_view name, std::u16string_view stored) noexcept;

} // namespace TARVO
