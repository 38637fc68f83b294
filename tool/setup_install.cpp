#include "client/installation.h"
#include "platform/file.h"
#include "tool/component_categories.h"
#include "tool/failure.h"
#include "tool/installation_key.h"
#include "tool/library.h"
#include "tool/output.h"
#include "tool/scope.h"
#include "tool/setup.h"
#include "tool/text.h"
#include "tool/type_library_registration.h"

#include <fmt/format.h>

namespace tool {

namespace {

// Programs may well find another copy than the one that has just been made known.
void tellWhatIsFound(const Library& library, const std::u16string& folder, bool allUsers) {
    const std::string copy = fmt::format("TARVO {} in {}", library.version(), toUtf8(folder));
    const auto found = TARVO::newestInstallation();
    if (found && found->allUsers == allUsers)
        return printOut("Programs find {} ({} scope).\n", copy, scopeName(allUsers));
    printOut("{} is known now ({} scope), but a program with the rights of this one finds {}; "
             "`tarvo setup check` tells why.\n",
             copy, scopeName(allUsers), found ? toUtf8(found->folder) : "none");
}

// Another copy is removed by itself, or when its library is gone.
void refuseIfOther(bool allUsers) {
    const auto known = TARVO::installationOf(allUsers);
    if (!known)
        return;
    const std::u16string path = TARVO::libraryPath(*known);
    const std::u16string own = Library::pathBesideTool();
    if (path != own && TARVO::platform::fileExists(path) && !TARVO::platform::isSameFile(path, own))
        throw Failure(fmt::format("the {} scope's installation is another copy, in {}; run `tarvo "
                                  "setup remove` there",
                                  scopeName(allUsers), toUtf8(known->folder)));
}

} // namespace

// The key comes last: programs find nothing that isn't whole.
void installSetup(bool allUsers) {
    const Library library = Library::besideTool();
    std::u16string folder = toUtf16(library.folder());
    folder.pop_back(); // the separator
    const bool areNew = !isRegisteredIn(ScopeWriter(library, allUsers), kComponentCategories);
    registerComponentCategories(library, allUsers);
    try {
        writeInstallationKey(allUsers, folder, library.version());
    } catch (const Failure&) {
        if (areNew)
            unregisterFrom(library, kComponentCategories, allUsers);
        throw;
    }
    tellWhatIsFound(library, folder, allUsers);
}

// The key goes first, so that it can go where the library is gone already.
void removeSetup(bool allUsers) {
    refuseIfOther(allUsers);
    if (!removeInstallationKey(allUsers))
        throw Failure(fmt::format("no installation is known in the {} scope", scopeName(allUsers)));
    unregisterFrom(Library::besideTool(), kComponentCategories, allUsers);
}

} // namespace tool
