// The COM bridge, MORVEN.dll: it stands beside this library and makes COM classes in this process
// look like components.
#pragma once

#include "tarvo/base.h"

namespace TARVO {

// Has the bridge create a component. RC_CANNOT_CREATE if it can't be loaded or has no entry point,
// which the next call tries again; otherwise the entry point's own result. One call at a time in
// the whole process, the entry point's run included.
Result createThroughCOMBridge(const UUID& uuid, IVaskInterface** instance);

} // namespace TARVO
