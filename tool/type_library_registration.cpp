#include "tool/type_library_registration.h"

#include "tool/failure.h"
#include "tool/text.h"
#include "types/version_numbers.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

using DefinedLibrary = Definition::DefinedLibrary;

std::string keyOf(const tarvo::UUID& uuid) {
    return "/types/libraries/" + toUtf8(uuid.string());
}

// Empty for a library without a version, and for one that isn't registered.
std::string versionOf(const ScopeWriter& writer, const tarvo::UUID& uuid) {
    return writer.text(keyOf(uuid), "version");
}

void remove(const ScopeWriter& writer, const tarvo::UUID& uuid) {
    require(writer.get().table->unregisterLibrary(writer.get().me, &uuid),
            "cannot remove the library");
}

bool isGreater(const std::string& version, const std::string& other) {
    return TARVO::isGreaterVersion(TARVO::versionNumbers(toUtf16(version)),
                                   TARVO::versionNumbers(toUtf16(other)));
}

void refuseIfHigher(const DefinedLibrary& defined, const std::string& registered) {
    if (!registered.empty() && defined.version.empty())
        throw Failure(fmt::format("{} is registered with version {}, and the definition has no "
                                  "version; unregister it first, or give it a version",
                                  defined.name, registered));
    if (isGreater(registered, defined.version))
        throw Failure(fmt::format("{} is registered with the higher version {}; unregister it "
                                  "first to go back to {}",
                                  defined.name, registered, defined.version));
}

// The library leaves a lower version as it is, so that goes first, by a commit of its own.
void makeRoom(const Library& library, const Definition& definition, bool allUsers) {
    const ScopeWriter writer(library, allUsers);
    bool isChanged = false;
    for (const DefinedLibrary& defined : definition.libraries()) {
        const std::string registered = versionOf(writer, defined.uuid);
        refuseIfHigher(defined, registered);
        if (registered.empty() || !isGreater(defined.version, registered))
            continue;
        remove(writer, defined.uuid);
        isChanged = true;
    }
    if (isChanged)
        writer.commit();
}

} // namespace

void registerIn(const Library& library, const Definition& definition, bool allUsers) {
    makeRoom(library, definition, allUsers);
    const ScopeWriter writer(library, allUsers);
    require(writer.get().table->registerLibrary(writer.get().me, definition.path().c_str()),
            "cannot register " + toUtf8(definition.path()));
    writer.commit();
}

bool isOutdated(const Library& library, const Definition& definition, bool allUsers) {
    const ScopeWriter writer(library, allUsers);
    return std::ranges::any_of(definition.libraries(), [&](const DefinedLibrary& defined) {
        return isGreater(versionOf(writer, defined.uuid), defined.version);
    });
}

bool isRegisteredIn(const ScopeWriter& writer, const tarvo::UUID& uuid) {
    return writer.hasKey(keyOf(uuid));
}

bool hasLocationIn(const ScopeWriter& writer, const tarvo::UUID& uuid,
                   const std::string& location) {
    return writer.hasValue(keyOf(uuid), location);
}

bool unregisterFrom(const Library& library, const tarvo::UUID& uuid, bool allUsers) {
    const ScopeWriter writer(library, allUsers);
    if (!isRegisteredIn(writer, uuid))
        return false;
    remove(writer, uuid);
    writer.commit();
    return true;
}

} // namespace tool
