#include "registry/registry_key.h"

#include "registry/scope.h"
#include "tarvo/array.hpp"
#include "tarvo/uuid.h"

namespace TARVO {

constinit const IVaskRegistryKeyTable TarvoRegistryKey::kTable = {
    .addReference = slot<TarvoRegistryKey, &TarvoRegistryKey::addReference>,
    .release = slot<TarvoRegistryKey, &TarvoRegistryKey::release>,
    .getValueNames = slot<TarvoRegistryKey, &TarvoRegistryKey::getValueNames>,
    .getValueType = slot<TarvoRegistryKey, &TarvoRegistryKey::getValueType>,
    .getStringValue = slot<TarvoRegistryKey, &TarvoRegistryKey::getStringValue>,
    .getIntegerValue = slot<TarvoRegistryKey, &TarvoRegistryKey::getIntegerValue>,
    .getUUIDValue = slot<TarvoRegistryKey, &TarvoRegistryKey::getUUIDValue>,
    .getKeyNames = slot<TarvoRegistryKey, &TarvoRegistryKey::getKeyNames>,
    .getKey = slot<TarvoRegistryKey, &TarvoRegistryKey::getKey>,
    .isAllUsersValue = slot<TarvoRegistryKey, &TarvoRegistryKey::isAllUsersValue>,
};

TarvoRegistryKey::TarvoRegistryKey(Reference<TarvoRegistry> user,
                                   Reference<TarvoRegistry> allUsers) noexcept
    : TarvoRegistryKeyImpl(&kTable, std::move(user), std::move(allUsers)) {}

Reference<TarvoRegistryKey> TarvoRegistryKey::keyAt(const char16_t* path) const {
    auto user = Reference<TarvoRegistry>::share(findKey(userSide.get(), path));
    auto allUsers = Reference<TarvoRegistry>::share(findKey(allUsersSide.get(), path));
    if (!user && !allUsers)
        return nullptr;
    return makeObject<TarvoRegistryKey>(std::move(user), std::move(allUsers));
}

Result giveNames(const std::vector<std::u16string_view>& names, IVaskArray* target) {
    return tarvo::setItems<IVaskString>(target, names, tarvo::setText);
}

void giveKey(Reference<TarvoRegistry> user, Reference<TarvoRegistry> allUsers,
             IVaskRegistryKey** key) {
    handOut(makeObject<TarvoRegistryKey>(std::move(user), std::move(allUsers)), key);
}

Result readUUID(const NamedValue& value, UUID& uuid) {
    return vaskUUIDFromString(value.text().data(), &uuid);
}

namespace {

// A path of the whole registry begins with a separator, which is dropped; what remains is relative
// to the root, which itself is a null path. False for a path that doesn't begin so.
bool makeRelative(const char16_t*& path) {
    if (path == nullptr)
        return true;
    if (*path == u'/' || *path == u'\\')
        ++path;
    else if (*path != u'\0')
        return false;
    if (*path == u'\0')
        path = nullptr;
    return true;
}

Result openKey(const char16_t* path, IVaskRegistryKey** key) {
    if (key == nullptr)
        return RC_NULL_POINTER;
    *key = nullptr;
    if (!makeRelative(path))
        return RC_NOT_FOUND;
    Reference<TarvoRegistry> user;
    Reference<TarvoRegistry> allUsers;
    if (const Result result = loadScopes(path, user, allUsers); result != RC_OK)
        return result;
    if (!allUsers && !user)
        return RC_NOT_FOUND;
    giveKey(std::move(user), std::move(allUsers), key);
    return RC_OK;
}

} // namespace

} // namespace TARVO

TarvoResult vaskGetRegistryKey(const char16_t* path, IVaskRegistryKey** key) {
    return TARVO::guardedCall([&] { return TARVO::openKey(path, key); });
}
