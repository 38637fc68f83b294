// The one fold of case that names know: A to Z, and no other letter.
#pragma once

#include <string>
#include <string_view>

namespace TARVO {

inline std::u16string lowerCase(std::u16string_view text) {
    std::u16string lowered(text);
    for (char16_t& unit : lowered)
        if (unit >= u'A' && unit <= u'Z')
            unit = static_cast<char16_t>(unit + (u'a' - u'A'));
    return lowered;
}

} // namespace TARVO
