// The definition library that is shipped beside TARVO.dll. By its categories the catalogue knows
// which COM classes are components, so that an installation registers it.
#pragma once

#include "tarvo/uuid.hpp"
#include "tool/library.h"

#include <string>

namespace tool {

inline constexpr const char* kComponentCategoriesFile = "component_categories.tidl";
inline constexpr auto kComponentCategories =
    tarvo::UUID::parse(u"{3b78cdeb-7fe8-4542-b58b-26205774d82a}").value();

// Registers the one beside the library in a scope, unless a higher version stands there.
void registerComponentCategories(const Library& library, bool allUsers);

} // namespace tool
