// The two forms in which a part of the registry is shown: an indented tree for people, JSON for
// programs. Both are made from one walk, which needs no more stack for a deeper tree.
#pragma once

#include "tool/key_source.h"

#include <memory>
#include <string>

namespace tool {

// Keys end in a slash and what is in them is indented; each value bears its type and its scope:
//
//     components/
//       flags = 0                                                    integer  machine
std::string treeAsText(std::unique_ptr<KeySource> root);

// {"values": {name: {"type", "value", "scope"}}, "keys": {name: the same again}}
std::string treeAsJson(std::unique_ptr<KeySource> root);

} // namespace tool
