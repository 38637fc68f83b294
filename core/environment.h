// Where the installation and its data lie. Each folder is looked for once in the life of the
// process, at first need, and stays as it was found.
#pragma once

#include "tarvo/base.h"

#include <string>

namespace TARVO {

// The folder that holds this library, ending in a separator. Any thread.
const std::u16string& moduleFolder();

// The data folder of a scope, made if it isn't there, ending in a separator; empty if it can't be
// had. A first failure stands for the rest of the process's life. Any thread.
std::u16string dataFolder(bool allUsers);

} // namespace TARVO
