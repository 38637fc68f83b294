#include "catalogue/system_class.h"

#include <algorithm>
#include <span>

namespace TARVO {

std::optional<std::u16string_view> readText(const platform::SystemKey& key, const char16_t* name,
                                            ValueBuffer& buffer) {
    const auto isText = [](const std::optional<platform::SystemValue>& value) {
        return value && value->type == platform::kTextValue;
    };
    const auto found = key.findValue(name);
    if (!isText(found))
        return std::nullopt;
    buffer.resize(std::max(buffer.size(), found->size / sizeof(char16_t) + 1));
    const auto read = key.readValue(name, std::as_writable_bytes(std::span(buffer)));
    if (!isText(read))
        return std::nullopt;
    const std::u16string_view stored(buffer.data(), read->size / sizeof(char16_t));
    return stored.substr(0, stored.find(u'\0'));
}

} // namespace TARVO
