#include "client/installation.h"

#include "client/version.h"
#include "platform/folder.h"
#include "platform/process.h"
#include "platform/system_text.h"

namespace TARVO {

std::u16string libraryPath(const Installation& installation) {
    return installation.folder + platform::kFolderSeparator + u"TARVO.dll";
}

std::optional<Installation> installationOf(bool allUsers) {
    const auto root =
        allUsers ? platform::RegistryRoot::localMachine : platform::RegistryRoot::currentUser;
    const auto key = platform::SystemKey::open(root, kInstallationKey);
    if (!key)
        return std::nullopt;
    const auto folder = platform::readText(key, nullptr);
    if (!folder)
        return std::nullopt;
    return Installation{*folder,
                        parseInstalledVersion(platform::readText(key, u"version").value_or(u"")),
                        allUsers};
}

std::optional<Installation> newestInstallation() {
    std::optional<Installation> machine = installationOf(true);
    if (platform::hasFullElevation())
        return machine;
    std::optional<Installation> user = installationOf(false);
    if (!user || (machine && machine->version > user->version))
        return machine;
    return user;
}

} // namespace TARVO
