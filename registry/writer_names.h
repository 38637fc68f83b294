// What a writer accepts as names and paths. Nothing gets into the store that couldn't be read back
// from the file as it was set.
#pragma once

#include "tarvo/base.h"

#include <string>
#include <string_view>
#include <vector>

namespace TARVO {

// Checks and folds the name of a value. RC_OK, RC_NULL_POINTER, RC_INVALID_KEY_NAME (empty, or with
// a control character, a separator or an unpaired surrogate).
Result takeValueName(const char16_t* name, std::u16string& folded);

// Splits a relative path into folded names of keys; one separator behind the last is allowed.
// RC_OK, RC_INVALID_KEY_NAME (an empty path or component, a control character or an unpaired
// surrogate).
Result splitKeyPath(std::u16string_view path, std::vector<std::u16string>& components);

// Takes the separator off that a path from the root begins with; what is left is empty for the root
// itself. RC_OK, RC_INVALID_KEY_NAME (no separator in front of something else).
Result takeAbsolutePath(std::u16string_view& path);

} // namespace TARVO
