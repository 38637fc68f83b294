// Component libraries in this process. Each is loaded once and stays until the process ends, so
// that the components in it can outlive everything else.
#pragma once

#include "tarvo/base.h"

#include <string_view>

namespace TARVO {

// Has the library at the path create a component. RC_CANNOT_CREATE if it can't be loaded or has no
// entry point, which the next call tries again; otherwise the entry point's own result. One call at
// a time in the whole process, the entry point's run included.
Result createFromNativeLibrary(std::u16string_view path, const UUID& uuid,
                               IVaskInterface** instance);

} // namespace TARVO
