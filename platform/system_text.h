// Texts of the system's registry, as most programs want them.
#pragma once

#include "platform/system_registry.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>

namespace TARVO::platform {

// A text up to its null character. Nothing if there is no such value, or it is no text or has no
// bytes at all.
inline std::optional<std::u16string> readText(const SystemKey& key, const char16_t* name) {
    const auto found = key.findValue(name);
    if (!found || found->type != kTextValue || found->size == 0)
        return std::nullopt;
    std::u16string text((found->size + 1) / 2, u'\0');
    const auto read = key.readValue(name, std::as_writable_bytes(std::span(text)));
    if (!read || read->type != kTextValue)
        return std::nullopt;
    text.resize(std::min(text.find(u'\0'), read->size / 2));
    return text;
}

} // namespace TARVO::platform
