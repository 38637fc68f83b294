// The definition library that is shipped beside TARVO.dll. By its categories the catalogue knows
// which COM classes are components, so that an installation registers it.
#pragma once

#include "catalogue/names.h"
#include "tarvo/uuid.hpp"
#include "tool/library.h"

namespace tool {

inline constexpr const char* kComponentCategoriesFile = "component_categories.tidl";
inline constexpr tarvo::UUID kComponentCategories = TARVO::categories::kMarkingLibrary;

// Registers the one beside the library in a scope, unless a higher version stands there.
void registerComponentCategories(const Library& library, bool allUsers);

} // namespace tool
