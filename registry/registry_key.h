// Keys as callers read them: one object over the same place in both scopes, where the user's side
// answers first. All reading is written once here, for keys that can only be read and for those
// that can also be changed.
#pragma once

#include "core/object.h"
#include "registry/tree.h"
#include "tarvo/registry.h"

#include <utility>
#include <vector>

namespace TARVO {

// Fills a caller's array with names.
Result giveNames(const std::vector<std::u16string_view>& names, IVaskArray* target);

// Gives a new read-only key over the nodes, either of which may be null.
void giveKey(Reference<TarvoRegistry> user, Reference<TarvoRegistry> allUsers,
             IVaskRegistryKey** key);

// The identifier that a value of type uuid holds.
Result readUUID(const NamedValue& value, UUID& uuid);

// T implements the interface I, whose table begins with the slots of IVaskRegistryKey. The nodes
// are those that were there when the object was made, whatever has happened to the files since.
template <class I, class T>
class TarvoRegistryKeyImpl : public TarvoBaseImpl<T, I> {
    using Base = TarvoBaseImpl<T, I>;

  public:
    Result getValueNames(IVaskArray* names) {
        return names == nullptr ? RC_NULL_POINTER : giveNames(valueNames(), names);
    }

    Result getValueType(const char16_t* name, const char16_t* path, std::uint32_t* type) {
        if (name == nullptr || type == nullptr)
            return RC_NULL_POINTER;
        return fromEitherSide(name, path, [type](const NamedValue& value) -> Result {
            *type = static_cast<std::uint32_t>(value.type());
            return RC_OK;
        });
    }

    Result getStringValue(const char16_t* name, const char16_t* path, IVaskString* text) {
        if (name == nullptr || text == nullptr)
            return RC_NULL_POINTER;
        return fromEitherSide(name, path, [text](const NamedValue& value) -> Result {
            return value.type() == RegistryValueType::string ? tarvo::setText(text, value.text())
                                                             : RC_WRONG_VALUE_TYPE;
        });
    }

    Result getIntegerValue(const char16_t* name, const char16_t* path, std::int32_t* number) {
        if (name == nullptr || number == nullptr)
            return RC_NULL_POINTER;
        return fromEitherSide(name, path, [number](const NamedValue& value) -> Result {
            if (value.type() != RegistryValueType::integer)
                return RC_WRONG_VALUE_TYPE;
            *number = value.integer();
            return RC_OK;
        });
    }

    Result getUUIDValue(const char16_t* name, const char16_t* path, UUID* uuid) {
        if (uuid == nullptr)
            return RC_NULL_POINTER;
        *uuid = {};
        if (name == nullptr)
            return RC_NULL_POINTER;
        return fromEitherSide(name, path, [uuid](const NamedValue& value) -> Result {
            return value.type() == RegistryValueType::uuid ? readUUID(value, *uuid)
                                                           : RC_WRONG_VALUE_TYPE;
        });
    }

    Result getKeyNames(IVaskArray* names) {
        return names == nullptr ? RC_NULL_POINTER : giveNames(keyNames(), names);
    }

    Result getKey(const char16_t* path, IVaskRegistryKey** key) {
        if (path == nullptr || key == nullptr)
            return RC_NULL_POINTER;
        TarvoRegistry* allUsers = findKey(allUsersSide.get(), path);
        TarvoRegistry* user = findKey(userSide.get(), path);
        if (allUsers == nullptr && user == nullptr)
            return RC_NOT_FOUND;
        giveKey(Reference<TarvoRegistry>::share(user), Reference<TarvoRegistry>::share(allUsers),
                key);
        return RC_OK;
    }

    Result isAllUsersValue(const char16_t* name, std::uint32_t* result) {
        if (result == nullptr || name == nullptr)
            return RC_NULL_POINTER;
        *result = 0;
        if (userSide && userSide->values.find(name) != nullptr)
            return RC_OK;
        if (!allUsersSide || allUsersSide->values.find(name) == nullptr)
            return RC_NOT_FOUND;
        *result = 1;
        return RC_OK;
    }

    // The names of both sides' entries, each once. They stay where the nodes are.
    std::vector<std::u16string_view> valueNames() const {
        return mergedNames(&TarvoRegistry::values);
    }
    std::vector<std::u16string_view> keyNames() const {
        return mergedNames(&TarvoRegistry::subKeys);
    }

    // Whether there is a value of type string that isn't empty.
    bool hasText(const char16_t* name) const {
        return fromEitherSide(name, nullptr, [](const NamedValue& value) -> Result {
                   return value.type() == RegistryValueType::string && !value.text().empty()
                              ? RC_OK
                              : RC_NOT_AVAILABLE;
               }) == RC_OK;
    }

  protected:
    TarvoRegistryKeyImpl(const typename Base::Table* table, Reference<TarvoRegistry> user,
                         Reference<TarvoRegistry> allUsers) noexcept
        : Base(table), userSide(std::move(user)), allUsersSide(std::move(allUsers)) {}

    Reference<TarvoRegistry> userSide;
    Reference<TarvoRegistry> allUsersSide;

  private:
    // Lets `use` answer from the user's value, or from the all users' where the user has none of
    // that name. A value of another type hides the other side's all the same.
    template <class Use>
    Result fromEitherSide(std::u16string_view name, const char16_t* path, Use&& use) const {
        Result result = RC_NOT_FOUND;
        for (TarvoRegistry* side : {userSide.get(), allUsersSide.get()}) {
            const TarvoRegistry* node = side == nullptr ? nullptr : findKey(side, path);
            const NamedValue* value = node == nullptr ? nullptr : node->values.find(name);
            if (value != nullptr)
                result = use(*value);
            if (result != RC_NOT_FOUND)
                break;
        }
        return result;
    }

    template <class Entry>
    std::vector<std::u16string_view> mergedNames(NameTable<Entry> TarvoRegistry::*table) const {
        std::vector<std::u16string_view> names;
        names.reserve((allUsersSide ? ((*allUsersSide).*table).size() : 0) +
                      (userSide ? ((*userSide).*table).size() : 0));
        if (allUsersSide)
            ((*allUsersSide).*table).forEach([&](const Entry& entry) {
                names.push_back(entry.name());
            });
        if (userSide)
            ((*userSide).*table).forEach([&](const Entry& entry) {
                if (!allUsersSide ||
                    ((*allUsersSide).*table).find(entry.name(), entry.hash()) == nullptr)
                    names.push_back(entry.name());
            });
        return names;
    }
};

// A key to read.
class TarvoRegistryKey final : public TarvoRegistryKeyImpl<IVaskRegistryKey, TarvoRegistryKey> {
  public:
    TarvoRegistryKey(Reference<TarvoRegistry> user, Reference<TarvoRegistry> allUsers) noexcept;

    // The key at a path below this one; null if neither side has it.
    Reference<TarvoRegistryKey> keyAt(const char16_t* path) const;

  private:
    static const IVaskRegistryKeyTable kTable;
};

} // namespace TARVO
