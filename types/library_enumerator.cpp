#include "types/library_enumerator.h"

#include "core/raw_collection.h"
#include "core/uuid.h"
#include "registry/scope.h"
#include "tarvo/uuid.h"
#include "types/definition_file.h"
#include "types/version_numbers.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace TARVO {

namespace {

const TarvoRegistry* childOf(const LibraryScope& scope, const char16_t* name) {
    return scope.types ? findKey(scope.types.get(), name) : nullptr;
}

std::optional<UUID> uuidOfName(std::u16string_view name) {
    UUID uuid;
    if (vaskUUIDFromString(std::u16string(name).c_str(), &uuid) != RC_OK)
        return std::nullopt;
    return uuid;
}

// In the order of their names, so that of two libraries with one name the same one is known in
// every process.
std::vector<const TarvoRegistry*> sortedSubKeys(const TarvoRegistry* key) {
    std::vector<const TarvoRegistry*> subKeys;
    if (key != nullptr)
        key->subKeys.forEach([&](const TarvoRegistry& subKey) { subKeys.push_back(&subKey); });
    std::ranges::sort(subKeys, {}, [](const TarvoRegistry* subKey) { return subKey->name(); });
    return subKeys;
}

// Of a library in both scopes, the one for all users counts if its version is the greater one.
bool isAllUsersNewer(const TarvoRegistry& allUsers, const TarvoRegistry& user) {
    const NamedValue* version = findStringValue(allUsers, u"version");
    if (version == nullptr || findStringValue(allUsers, u"name") == nullptr)
        return false;
    const NamedValue* userVersion = findStringValue(user, u"version");
    return userVersion == nullptr ||
           isGreaterVersion(versionNumbers(version->text()), versionNumbers(userVersion->text()));
}

} // namespace

constinit const IVaskLibraryEnumeratorTable TarvoLibraryEnumerator::kTable = {
    .addReference = slot<TarvoLibraryEnumerator, &TarvoLibraryEnumerator::addReference>,
    .release = slot<TarvoLibraryEnumerator, &TarvoLibraryEnumerator::release>,
    .getLibraryByUUID = slot<TarvoLibraryEnumerator, &TarvoLibraryEnumerator::getLibraryByUUID>,
    .getLibraryByName = slot<TarvoLibraryEnumerator, &TarvoLibraryEnumerator::getLibraryByName>,
    .getAllLibraries = slot<TarvoLibraryEnumerator, &TarvoLibraryEnumerator::getAllLibraries>,
    .getLibraryOfInterface =
        slot<TarvoLibraryEnumerator, &TarvoLibraryEnumerator::getLibraryOfInterface>,
};

TarvoLibraryEnumerator::TarvoLibraryEnumerator(const LibraryScope& user,
                                               const LibraryScope& allUsers)
    : TarvoBaseImpl(&kTable),
      interfacesKey_(makeObject<TarvoRegistryKey>(
          Reference<TarvoRegistry>::share(user.types ? findKey(user.types.get(), u"interfaces")
                                                     : nullptr),
          Reference<TarvoRegistry>::share(
              allUsers.types ? findKey(allUsers.types.get(), u"interfaces") : nullptr))) {
    addUserLibraries(user, allUsers);
    addAllUsersLibraries(allUsers);
}

void TarvoLibraryEnumerator::addUserLibraries(const LibraryScope& user,
                                              const LibraryScope& allUsers) {
    const TarvoRegistry* allUsersLibraries = childOf(allUsers, u"libraries");
    for (const TarvoRegistry* key : sortedSubKeys(childOf(user, u"libraries"))) {
        const auto uuid = uuidOfName(key->name());
        if (!uuid)
            continue;
        const TarvoRegistry* other =
            allUsersLibraries == nullptr ? nullptr : allUsersLibraries->subKeys.find(key->name());
        if (other != nullptr && isAllUsersNewer(*other, *key))
            add(*uuid, *other, allUsers.folder);
        else
            add(*uuid, *key, user.folder);
    }
}

void TarvoLibraryEnumerator::addAllUsersLibraries(const LibraryScope& allUsers) {
    for (const TarvoRegistry* key : sortedSubKeys(childOf(allUsers, u"libraries")))
        if (const auto uuid = uuidOfName(key->name()); uuid && !librariesByUUID_.contains(*uuid))
            add(*uuid, *key, allUsers.folder);
}

// A library without a name is passed over.
void TarvoLibraryEnumerator::add(const UUID& uuid, const TarvoRegistry& key,
                                 const std::u16string& folder) {
    const NamedValue* name = findStringValue(key, u"name");
    if (name == nullptr)
        return;
    const NamedValue* version = findStringValue(key, u"version");
    auto details = makeObject<TarvoLibraryDetails>(uuid, name->text(),
                                                   version == nullptr ? u"" : version->text(),
                                                   folder + definitionFileName(uuid), key);
    librariesByName_.insert_or_assign(std::u16string(name->text()), details);
    librariesByUUID_.insert_or_assign(uuid, std::move(details));
}

Result TarvoLibraryEnumerator::getLibraryByUUID(const UUID* uuid, IVaskLibraryDetails** details) {
    if (uuid == nullptr || details == nullptr)
        return RC_NULL_POINTER;
    const auto found = librariesByUUID_.find(*uuid);
    if (found == librariesByUUID_.end())
        return RC_NOT_AVAILABLE;
    *details = Details(found->second).detach()->details();
    return RC_OK;
}

Result TarvoLibraryEnumerator::getLibraryByName(const char16_t* name,
                                                IVaskLibraryDetails** details) {
    if (name == nullptr || details == nullptr)
        return RC_NULL_POINTER;
    const auto found = librariesByName_.find(std::u16string_view(name));
    if (found == librariesByName_.end())
        return RC_NOT_AVAILABLE;
    *details = Details(found->second).detach()->details();
    return RC_OK;
}

Result TarvoLibraryEnumerator::getAllLibraries(ITarvoCollection** libraries) {
    if (libraries == nullptr)
        return RC_NULL_POINTER;
    std::vector<TarvoLibraryDetails*> sorted;
    for (const auto& [name, details] : librariesByName_)
        sorted.push_back(details.get());
    std::ranges::sort(sorted, {}, [](const TarvoLibraryDetails* library) {
        return tarvo::UUID(library->uuid());
    });
    auto collection = makeObject<TarvoRawCollection>(u"Libraries");
    for (TarvoLibraryDetails* library : sorted)
        collection->append(Reference<IVaskInterface>::share(library->pair()));
    *libraries = collection.detach()->collection();
    return RC_OK;
}

Result TarvoLibraryEnumerator::getLibraryOfInterface(const UUID* interfaceId,
                                                     IVaskLibraryDetails** details) {
    if (interfaceId == nullptr || details == nullptr)
        return RC_NULL_POINTER;
    UUID library;
    const UUIDText text(*interfaceId);
    if (interfacesKey_->getUUIDValue(u"library", text.terminated(), &library) != RC_OK)
        return RC_NOT_AVAILABLE;
    return getLibraryByUUID(&library, details);
}

namespace {

// A scope that can't be read has no libraries.
LibraryScope loadTypes(bool allUsers) {
    LibraryScope scope;
    const std::u16string path = registryFilePath(allUsers);
    scope.folder = path.substr(0, path.rfind(u"registry.dat"));
    if (loadScope(allUsers, u"types", scope.types) != RC_OK)
        scope.types = nullptr;
    return scope;
}

} // namespace

} // namespace TARVO

TarvoResult vaskGetLibraryEnumerator(IVaskLibraryEnumerator** enumerator) {
    using namespace TARVO;
    return guardedCall([&]() -> TarvoResult {
        if (enumerator == nullptr)
            return RC_NULL_POINTER;
        const LibraryScope allUsers = loadTypes(true);
        const LibraryScope user = loadTypes(false);
        handOut(makeObject<TarvoLibraryEnumerator>(user, allUsers), enumerator);
        return RC_OK;
    });
}
