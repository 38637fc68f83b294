// The binding of a library that the program names itself, for programs that have a copy of their
// own beside them and must work before any installation is known.
#pragma once

#include "tarvo/base.h"

#include <string>

namespace TARVO {

// As loadTarvoLibrary, but with the file at this path. What has been bound before stays loaded, and
// the table and later bindings are those of this library. If the file can't be loaded, nothing has
// changed.
bool loadNamedLibrary(const std::u16string& path, IVaskString* message);

} // namespace TARVO
