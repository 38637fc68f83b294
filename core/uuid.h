// The text form of identifiers inside the library, and the strict test that guards the places where
// a name is taken for an identifier only if it looks exactly like one.
#pragma once

#include "tarvo/uuid.hpp"

#include <array>
#include <optional>
#include <string_view>

namespace TARVO {

constexpr std::size_t kUUIDTextLength = tarvo::UUID::kTextLength;

// "{00010203-0405-0607-0809-0a0b0c0d0e0f}" and a terminator.
class UUIDText {
  public:
    explicit UUIDText(const UUID& uuid) noexcept : units_(tarvo::UUID(uuid).text()) {}
    std::u16string_view view() const noexcept { return {units_.data(), kUUIDTextLength}; }
    operator std::u16string_view() const noexcept { return view(); }
    const char16_t* terminated() const noexcept { return units_.data(); }

  private:
    std::array<char16_t, kUUIDTextLength + 1> units_;
};

UUID newUUID();

// Whether a whole text is an identifier as the system prints it: lower case, with braces.
bool isUUIDText(std::u16string_view text) noexcept;

} // namespace TARVO
