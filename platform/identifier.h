// Identifiers as the system makes them, and as it reads and writes those of classes. Their bytes
// are in the order in which their text prints them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace TARVO::platform {

using IdentifierBytes = std::array<std::uint8_t, 16>;

// "{00112233-4455-6677-8899-AABBCCDDEEFF}" and a null character.
using ClassText = std::array<char16_t, 39>;

// A new RFC 4122 identifier.
IdentifierBytes newIdentifier();

// Reads the text of a class's identifier: exactly the form of ClassText, in either case. Windows
// also takes the ProgID of a class that is registered.
//   text  ends in a null character
std::optional<IdentifierBytes> classIdentifier(const char16_t* text);

// In upper case.
ClassText classText(const IdentifierBytes& bytes);

} // namespace TARVO::platform
