#include "tool/installation_key.h"

#include "client/installation.h"
#include "platform/process.h"
#include "platform/system_registry.h"
#include "tool/failure.h"
#include "tool/scope.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

namespace {

using TARVO::platform::SystemKey;

TARVO::platform::RegistryRoot rootOf(bool allUsers) {
    return allUsers ? TARVO::platform::RegistryRoot::localMachine
                    : TARVO::platform::RegistryRoot::currentUser;
}

[[noreturn]] void refuse(bool allUsers) {
    throw Failure(fmt::format("cannot write the {}'s part of the system's registry: {}",
                              scopeName(allUsers),
                              allUsers && !TARVO::platform::isElevated()
                                  ? "that needs an administrator, on Linux root"
                                  : "it is damaged, or somebody else holds or protects it"));
}

} // namespace

// A root itself is no key that could be opened for writing, but its first part is always there.
void writeInstallationKey(bool allUsers, const std::u16string& folder, const std::string& version) {
    const std::u16string path = TARVO::kInstallationKey;
    const std::size_t first = path.find(u'\\');
    const auto parent = SystemKey::openForWriting(rootOf(allUsers), path.substr(0, first).c_str());
    const auto key = parent ? parent.create(path.substr(first + 1).c_str()) : SystemKey();
    if (!key || !key.setText(nullptr, folder.c_str()) ||
        !key.setText(u"version", toUtf16(version).c_str()))
        refuse(allUsers);
}

bool removeInstallationKey(bool allUsers) {
    if (!hasInstallationKey(allUsers))
        return false;
    const std::u16string path = TARVO::kInstallationKey;
    const std::size_t last = path.rfind(u'\\');
    const auto parent = SystemKey::openForWriting(rootOf(allUsers), path.substr(0, last).c_str());
    if (parent && parent.deleteTree(path.substr(last + 1).c_str()))
        return true;
    if (hasInstallationKey(allUsers))
        refuse(allUsers);
    return false; // another process was faster
}

bool hasInstallationKey(bool allUsers) {
    return static_cast<bool>(SystemKey::open(rootOf(allUsers), TARVO::kInstallationKey));
}

} // namespace tool
