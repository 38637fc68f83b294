#include "tool/component_categories.h"

#include "tool/type_library_registration.h"

namespace tool {

void registerComponentCategories(const Library& library, bool allUsers) {
    const Definition definition(library, library.folder() + kComponentCategoriesFile);
    if (!isOutdated(library, definition, allUsers))
        registerIn(library, definition, allUsers);
}

} // namespace tool
