// COM classes that the library has published for its components, as `tarvo setup check` looks at
// them.
#pragma once

#include "tarvo/uuid.hpp"
#include "tool/checkup.h"

#include <functional>

namespace tool {

// Reports published classes without a component.
void examineClasses(Checkup& checkup, const std::function<bool(const tarvo::UUID&)>& isRegistered);

} // namespace tool
