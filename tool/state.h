// The commands on saved state. Each raises Failure if it can't do its work.
#pragma once

#include <string>

namespace tool {

// Prints the tree that a stream payload holds. Of a damaged one, what is before the damage, and
// then raises Failure, which tells where and why.
void showState(const std::string& file, bool asJson);

// Writes the stream payload of a tree that is told in JSON.
void makeState(const std::string& treeFile, const std::string& payloadFile);

} // namespace tool
