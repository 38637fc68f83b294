// The human text of a result code. The texts themselves live in the resource library, which is
// there for the installation's language; without it the code's name and number stand in.
#pragma once

#include "tarvo/base.h"

#include <string>

namespace TARVO {

// Any code has a text; an unknown one has that of RC_UNSPECIFIED.
std::u16string textOfResult(Result code);

} // namespace TARVO
