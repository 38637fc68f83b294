// The name under which a scope keeps the definition of a registered library: the identifier in
// upper case. The definition parser finds the definitions that another one imports by it.
#pragma once

#include "tarvo/uuid.hpp"

#include <string>

namespace TARVO {

inline std::u16string definitionFileName(const tarvo::UUID& library) {
    std::u16string name = library.string().substr(1, tarvo::UUID::kTextLength - 2);
    for (char16_t& unit : name)
        if (unit >= u'a' && unit <= u'f')
            unit = static_cast<char16_t>(unit - u'a' + u'A');
    return name + u".tidl";
}

} // namespace TARVO
