#include "types/version_numbers.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace TARVO {

namespace {

// Takes a number off the text as the language's formatted input does: white space and a sign may
// stand before it. Nothing if there is none, or if it is out of range.
std::optional<std::int32_t> takeNumber(std::u16string_view& text) {
    using Limits = std::numeric_limits<std::int32_t>;
    text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
    const bool isNegative = text.starts_with(u'-');
    if (isNegative || text.starts_with(u'+'))
        text.remove_prefix(1);
    std::int64_t number = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= u'0' && text[digits] <= u'9'; ++digits)
        number = std::min(number * 10 + (text[digits] - u'0'), std::int64_t{Limits::max()} + 2);
    text.remove_prefix(digits);
    if (isNegative)
        number = -number;
    if (digits == 0 || number > Limits::max() || number < Limits::min())
        return std::nullopt;
    return static_cast<std::int32_t>(number);
}

} // namespace

VersionNumbers versionNumbers(std::u16string_view text) {
    VersionNumbers numbers;
    while (const auto number = takeNumber(text)) {
        numbers.push_back(*number);
        if (!text.starts_with(u'.'))
            break;
        text.remove_prefix(1);
    }
    return numbers;
}

bool isGreaterVersion(const VersionNumbers& one, const VersionNumbers& other) {
    const std::size_t common = std::min(one.size(), other.size());
    for (std::size_t i = 0; i < common; ++i)
        if (one[i] != other[i])
            return one[i] > other[i];
    return std::any_of(one.begin() + static_cast<std::ptrdiff_t>(common), one.end(),
                       [](std::int32_t number) { return number != 0; });
}

} // namespace TARVO
