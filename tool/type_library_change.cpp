#include "tool/component.h"
#include "tool/definition.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"
#include "tool/type_library.h"
#include "tool/type_library_registration.h"
#include "tool/uuid_argument.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

[[noreturn]] void refuse(const tarvo::UUID& uuid, bool allUsers) {
    throw Failure(fmt::format("{} is not registered in the {} scope", toUtf8(uuid.string()),
                              scopeName(allUsers)),
                  RC_NOT_FOUND);
}

// The writer of a command that changes one library, which must be registered.
ScopeWriter writerFor(const Library& library, const tarvo::UUID& uuid, bool allUsers) {
    ScopeWriter writer(library, allUsers);
    if (!isRegisteredIn(writer, uuid))
        refuse(uuid, allUsers);
    return writer;
}

std::uint32_t locationNumber(const std::string& name) {
    return static_cast<std::uint32_t>(std::ranges::find(kLocationNames, name) -
                                      kLocationNames.begin());
}

} // namespace

void registerDefinition(const std::string& path, bool allUsers) {
    const Library library;
    const Definition definition(library, path);
    registerIn(library, definition, allUsers);
    for (const Definition::DefinedLibrary& defined : definition.libraries())
        printOut("Registered {} {} in the {} scope.\n", printable(defined.name),
                 toUtf8(defined.uuid.string()), scopeName(allUsers));
}

void unregisterTypeLibrary(const std::string& uuidText, bool allUsers) {
    const tarvo::UUID uuid = uuidArgument(uuidText);
    if (!unregisterFrom(Library(), uuid, allUsers))
        refuse(uuid, allUsers);
}

void setTypeLibraryLocation(const std::string& uuidText, const std::string& location,
                            const std::string& text, bool allUsers) {
    const tarvo::UUID uuid = uuidArgument(uuidText);
    const Library library;
    const ScopeWriter writer = writerFor(library, uuid, allUsers);
    require(writer.get().table->setLibraryLocation(writer.get().me, &uuid, locationNumber(location),
                                                   toUtf16(text).c_str()),
            "cannot set the location");
    writer.commit();
}

void removeTypeLibraryLocation(const std::string& uuidText, const std::string& location,
                               bool allUsers) {
    const tarvo::UUID uuid = uuidArgument(uuidText);
    const Library library;
    const ScopeWriter writer = writerFor(library, uuid, allUsers);
    if (!hasLocationIn(writer, uuid, location))
        throw Failure(fmt::format("{} has no location {} in the {} scope", toUtf8(uuid.string()),
                                  location, scopeName(allUsers)),
                      RC_NOT_FOUND);
    require(
        writer.get().table->removeLibraryLocation(writer.get().me, &uuid, locationNumber(location)),
        "cannot remove the location");
    writer.commit();
}

} // namespace tool
