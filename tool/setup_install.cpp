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

// The key comes last: programs find nothing that isn't whole.
void installSetup(bool allUsers) {
    const Library library = Library::besideTool();
    std::u16string folder = toUtf16(library.folder());
    folder.pop_back(); // the separator
    registerComponentCategories(library, allUsers);
    writeInstallationKey(allUsers, folder, library.version());
    printOut("Programs find TARVO {} in {} ({} scope).\n", library.version(), toUtf8(folder),
             scopeName(allUsers));
}

// The key goes first, so that it can go where the library is gone already.
void removeSetup(bool allUsers) {
    if (!removeInstallationKey(allUsers))
        throw Failure(fmt::format("no installation is known in the {} scope", scopeName(allUsers)));
    unregisterFrom(Library::besideTool(), kComponentCategories, allUsers);
}

} // namespace tool
