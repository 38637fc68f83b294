// What the catalogue needs of the system registry, where the COM classes are: their identifiers'
// texts, and the texts in their keys.
#pragma once

#include "platform/identifier.h"
#include "platform/system_registry.h"
#include "tarvo/base.h"

#include <bit>
#include <optional>
#include <string_view>
#include <vector>

namespace TARVO {

// Always gone through in this order.
inline constexpr std::array kRegistryViews = {platform::RegistryView::view32,
                                              platform::RegistryView::view64};

// In upper case, with braces and a terminator.
inline platform::ClassText classText(const UUID& uuid) {
    return platform::classText(std::bit_cast<platform::IdentifierBytes>(uuid));
}

// Nothing for a text that is no class's identifier.
inline std::optional<UUID> classIdentifier(const char16_t* text) {
    const auto bytes = platform::classIdentifier(text);
    return bytes ? std::optional(std::bit_cast<UUID>(*bytes)) : std::nullopt;
}

// Room for reading values, kept from one to the next.
using ValueBuffer = std::vector<char16_t>;

// Reads a text up to its first null character, stored or not; it stays in the buffer until the next
// is read. Nothing if there is no value of that name, or one of another type.
//   name  null for the default value
std::optional<std::u16string_view> readText(const platform::SystemKey& key, const char16_t* name,
                                            ValueBuffer& buffer);

} // namespace TARVO
