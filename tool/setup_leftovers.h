// What is left over in one scope's registry, or has only one side of what belongs together.
#pragma once

#include "tool/checkup.h"
#include "tool/scope_trees.h"
#include "tool/scope_writer.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// A finding that a change of its scope mends. All changes of a scope are one commit, so that its
// backup is the state before all of them.
struct Leftover {
    Finding finding;
    std::string whenMended;
    std::function<void(const ScopeWriter&)> change; // none for what people alone can mend
};

// Those of one scope. The other scope counts too: programs see both as one.
std::vector<Leftover> findLeftovers(const ScopeTrees& trees, bool allUsers);

} // namespace tool
