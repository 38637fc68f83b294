#include "instantiation/remote_location.h"

#include "core/link_error.h"

#include <algorithm>
#include <limits>

namespace TARVO {

namespace {

constexpr std::u16string_view kStart = u"tarvo://";

bool isPort(std::u16string_view text) noexcept {
    return !text.empty() &&
           std::ranges::all_of(text, [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
}

std::int32_t saturatedNumber(std::u16string_view digits) noexcept {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (const char16_t digit : digits)
        number = std::min(number * 10 + (digit - u'0'), kLargest);
    return static_cast<std::int32_t>(number);
}

} // namespace

RemoteLocation parseRemoteLocation(std::u16string_view url) {
    if (!url.starts_with(kStart))
        throw vask_link_error(RC_BAD_LOCATION);
    const std::u16string_view rest = url.substr(kStart.size());
    const std::size_t hostEnd = std::min(rest.find_first_of(u":^/"), rest.size());
    const std::u16string_view host = rest.substr(0, hostEnd);
    if (host.empty() || hostEnd == rest.size() || rest[hostEnd] != u':' ||
        !isPort(rest.substr(hostEnd + 1)))
        throw vask_link_error(RC_BAD_LOCATION);
    return {host, saturatedNumber(rest.substr(hostEnd + 1))};
}

} // namespace TARVO
