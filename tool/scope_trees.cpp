#include "tool/scope_trees.h"

#include "tool/failure.h"
#include "tool/registry_file.h"
#include "tool/scope.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace tool {

using TARVO::TarvoRegistry;

ScopeTrees::ScopeTrees(const Library& library) {
    for (const bool allUsers : kUserThenMachine) {
        RegistryFile file = readRegistryFile(library.registryPath(allUsers));
        if (file.fault || file.isCutOff)
            throw Failure(
                fmt::format("the registry file of the {} scope is damaged", scopeName(allUsers)));
        roots_[allUsers] = std::move(file.root);
    }
}

const TarvoRegistry* ScopeTrees::find(bool allUsers, const std::u16string& path) const {
    return TARVO::findKey(roots_[allUsers].get(), path.c_str());
}

bool ScopeTrees::hasKey(const std::u16string& path) const {
    return std::ranges::any_of(kUserThenMachine,
                               [&](bool allUsers) { return find(allUsers, path) != nullptr; });
}

bool ScopeTrees::hasValue(const std::u16string& path, std::u16string_view name) const {
    return std::ranges::any_of(kUserThenMachine, [&](bool allUsers) {
        const TarvoRegistry* key = find(allUsers, path);
        return key != nullptr && key->values.find(name) != nullptr;
    });
}

} // namespace tool
