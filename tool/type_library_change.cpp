#include "tarvo/registry_writer.h"
#include "tarvo/text.hpp"
#include "tool/component.h"
#include "tool/definition.h"
#include "tool/failure.h"
#include "tool/key_source.h"
#include "tool/text.h"
#include "tool/type_library.h"
#include "types/version_numbers.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

using Writer = tarvo::Reference<IVaskRegistryWriter>;

const char* scopeName(bool allUsers) {
    return allUsers ? "machine" : "user";
}

Writer openWriter(const Library& library, bool allUsers) {
    Writer writer;
    require(library.openWriter(allUsers, writer.out()),
            fmt::format("cannot change the {} scope", scopeName(allUsers)));
    return writer;
}

void commit(const Writer& writer, bool allUsers) {
    require(writer->table->commit(writer->me),
            fmt::format("cannot write the {} scope", scopeName(allUsers)));
}

tarvo::UUID parseUuid(const std::string& text) {
    const auto uuid = tarvo::UUID::parse(toUtf16(text));
    if (!uuid)
        throw Failure("not an identifier like {01234567-89ab-cdef-0123-456789abcdef}: " + text);
    return *uuid;
}

bool isRegistered(const Writer& writer, const tarvo::UUID& uuid) {
    tarvo::Reference<IVaskRegistryKey> key;
    return writer->table->getKey(writer->me, (u"/types/libraries/" + uuid.string()).c_str(),
                                 key.out()) == RC_OK;
}

// The version with which a library stands in the scope; empty if it has none or isn't there.
std::string registeredVersion(const Writer& writer, const tarvo::UUID& uuid) {
    tarvo::Reference<IVaskRegistryKey> key;
    tarvo::String version;
    if (writer->table->getKey(writer->me, (u"/types/libraries/" + uuid.string()).c_str(),
                              key.out()) == RC_OK)
        key->table->getStringValue(key->me, u"version", nullptr, version.pair());
    return toUtf8(version.text());
}

bool isGreater(const std::string& version, const std::string& other) {
    return TARVO::isGreaterVersion(TARVO::versionNumbers(toUtf16(version)),
                                   TARVO::versionNumbers(toUtf16(other)));
}

// The library leaves a lower version as it is, so that goes first, by a commit of its own. A
// definition without a version can't replace one that has it.
void makeRoom(const Library& library, const Definition& definition, bool allUsers) {
    const Writer writer = openWriter(library, allUsers);
    bool isChanged = false;
    for (const Definition::DefinedLibrary& defined : definition.libraries()) {
        const std::string version = registeredVersion(writer, defined.uuid);
        if (!version.empty() && defined.version.empty())
            throw Failure(fmt::format("{} is registered with version {}, and the definition has no "
                                      "version; unregister it first, or give it a version",
                                      defined.name, version));
        if (isGreater(version, defined.version))
            throw Failure(fmt::format("{} is registered with the higher version {}; unregister it "
                                      "first to go back to {}",
                                      defined.name, version, defined.version));
        if (version.empty() || !isGreater(defined.version, version))
            continue;
        require(writer->table->unregisterLibrary(writer->me, &defined.uuid),
                "cannot remove the lower version");
        isChanged = true;
    }
    if (isChanged)
        commit(writer, allUsers);
}

// The writer of a command that changes one library, which must be registered.
Writer writerFor(const Library& library, const tarvo::UUID& uuid, bool allUsers) {
    Writer writer = openWriter(library, allUsers);
    if (!isRegistered(writer, uuid))
        throw Failure(fmt::format("{} is not registered in the {} scope", toUtf8(uuid.string()),
                                  scopeName(allUsers)),
                      RC_NOT_FOUND);
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
    makeRoom(library, definition, allUsers);
    const Writer writer = openWriter(library, allUsers);
    require(writer->table->registerLibrary(writer->me, definition.path().c_str()),
            "cannot register " + path);
    commit(writer, allUsers);
    for (const Definition::DefinedLibrary& defined : definition.libraries())
        fmt::print("Registered {} {} in the {} scope.\n", printable(defined.name),
                   toUtf8(defined.uuid.string()), scopeName(allUsers));
}

void unregisterTypeLibrary(const std::string& uuidText, bool allUsers) {
    const tarvo::UUID uuid = parseUuid(uuidText);
    const Library library;
    const Writer writer = writerFor(library, uuid, allUsers);
    require(writer->table->unregisterLibrary(writer->me, &uuid), "cannot remove the library");
    commit(writer, allUsers);
}

void setTypeLibraryLocation(const std::string& uuidText, const std::string& location,
                            const std::string& text, bool allUsers) {
    const tarvo::UUID uuid = parseUuid(uuidText);
    const Library library;
    const Writer writer = writerFor(library, uuid, allUsers);
    require(writer->table->setLibraryLocation(writer->me, &uuid, locationNumber(location),
                                              toUtf16(text).c_str()),
            "cannot set the location");
    commit(writer, allUsers);
}

void removeTypeLibraryLocation(const std::string& uuidText, const std::string& location,
                               bool allUsers) {
    const tarvo::UUID uuid = parseUuid(uuidText);
    const Library library;
    const Writer writer = writerFor(library, uuid, allUsers);
    require(writer->table->removeLibraryLocation(writer->me, &uuid, locationNumber(location)),
            "cannot remove the location");
    commit(writer, allUsers);
}

} // namespace tool
