// Reading the registry (registry.h) in the terms of C++.
#pragma once

#include "array.hpp"
#include "error.hpp"
#include "load.hpp"
#include "reference.hpp"
#include "registry.h"
#include "text.hpp"
#include "uuid.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvo {

enum class ValueType : std::uint32_t {
    string = TARVO_REGISTRY_STRING,
    integer = TARVO_REGISTRY_INTEGER,
    uuid = TARVO_REGISTRY_UUID,
    empty = TARVO_REGISTRY_EMPTY,
};

class RegistryKey;

namespace detail {

// What can be read of a key, whether it is to be changed too or not. The path of a value leads from
// this key to the one that holds it; null is this key itself. A `find` gives nothing where there is
// no such value or key, for which the getter without it raises Error with RC_NOT_FOUND. Both raise
// RC_WRONG_VALUE_TYPE if the value holds another type.
template <class Pair>
class KeyReading {
    using Table = std::remove_cvref_t<decltype(*Pair::table)>;

  public:
    explicit KeyReading(Reference<Pair> key) noexcept : key_(std::move(key)) {}

    Pair* get() const noexcept { return key_.get(); }

    std::u16string string(CText name, CText path = nullptr) const {
        return required(findString(name, path), "getStringValue");
    }
    std::int32_t integer(CText name, CText path = nullptr) const {
        return required(findInteger(name, path), "getIntegerValue");
    }
    UUID uuid(CText name, CText path = nullptr) const {
        return required(findUuid(name, path), "getUUIDValue");
    }

    std::optional<std::u16string> findString(CText name, CText path = nullptr) const {
        String text;
        return found(&Table::getStringValue, "getStringValue", name, path, text.pair())
                   ? std::optional(std::move(text.text()))
                   : std::nullopt;
    }
    std::optional<std::int32_t> findInteger(CText name, CText path = nullptr) const {
        std::int32_t number = 0;
        return found(&Table::getIntegerValue, "getIntegerValue", name, path, &number)
                   ? std::optional(number)
                   : std::nullopt;
    }
    std::optional<UUID> findUuid(CText name, CText path = nullptr) const {
        UUID uuid;
        return found(&Table::getUUIDValue, "getUUIDValue", name, path, &uuid) ? std::optional(uuid)
                                                                              : std::nullopt;
    }

    // The type of a value; nothing if there is none of the name.
    std::optional<ValueType> type(CText name, CText path = nullptr) const {
        std::uint32_t type = 0;
        return found(&Table::getValueType, "getValueType", name, path, &type)
                   ? std::optional(static_cast<ValueType>(type))
                   : std::nullopt;
    }

    // Whether a value of this key stands in the scope of all users alone.
    bool isAllUsers(CText name) const {
        std::uint32_t result = 0;
        require(key_->table->isAllUsersValue(key_->me, name.get(), &result), "isAllUsersValue");
        return result != 0;
    }

    // In lower case and no particular order.
    std::vector<std::u16string> valueNames() const {
        return names(&Table::getValueNames, "getValueNames");
    }
    std::vector<std::u16string> keyNames() const {
        return names(&Table::getKeyNames, "getKeyNames");
    }

    // A key below this one, as it is now.
    RegistryKey key(CText path) const;
    std::optional<RegistryKey> findKey(CText path) const;

  protected:
    Reference<Pair> key_;

  private:
    template <class Value>
    static Value required(std::optional<Value> value, const char* call) {
        return value ? std::move(*value) : throw Error(RC_NOT_FOUND, call);
    }

    template <class Slot, class Out>
    bool found(Slot Table::*slot, const char* call, CText name, CText path, Out* out) const {
        const TarvoResult result = (key_->table->*slot)(key_->me, name.get(), path.get(), out);
        if (result != RC_NOT_FOUND)
            require(result, call);
        return result == RC_OK;
    }

    template <class Slot>
    std::vector<std::u16string> names(Slot Table::*slot, const char* call) const {
        StringArray names;
        require((key_->table->*slot)(key_->me, names.pair()), call);
        return takeTexts(names);
    }
};

} // namespace detail

// A key as it was when it was opened; open it again to see a later change. Any thread may use it.
//
//     const auto settings = tarvo::RegistryKey::find(u"/example/settings");
//     const std::int32_t port = settings ? settings->findInteger(u"port").value_or(80) : 80;
//     for (const std::u16string& name : tarvo::RegistryKey::open().keyNames())
//         std::cout << tarvo::toUtf8(name) << '\n';
class RegistryKey : public detail::KeyReading<IVaskRegistryKey> {
  public:
    using KeyReading::KeyReading;

    // A key of both scopes as the files hold it now, by its path from the root, with a separator in
    // front; null is the root. `open` raises Error with RC_NOT_FOUND if there is none. Waits while
    // another process writes a file.
    static RegistryKey open(CText path = nullptr) {
        Reference<IVaskRegistryKey> key;
        require(functions().vaskGetRegistryKey(path.get(), key.out()), "vaskGetRegistryKey");
        return RegistryKey(std::move(key));
    }
    static std::optional<RegistryKey> find(CText path) {
        Reference<IVaskRegistryKey> key;
        const TarvoResult result = functions().vaskGetRegistryKey(path.get(), key.out());
        if (result == RC_NOT_FOUND)
            return std::nullopt;
        require(result, "vaskGetRegistryKey");
        return RegistryKey(std::move(key));
    }
};

template <class Pair>
std::optional<RegistryKey> detail::KeyReading<Pair>::findKey(CText path) const {
    Reference<IVaskRegistryKey> key;
    const TarvoResult result = key_->table->getKey(key_->me, path.get(), key.out());
    if (result == RC_NOT_FOUND)
        return std::nullopt;
    require(result, "getKey");
    return RegistryKey(std::move(key));
}

template <class Pair>
RegistryKey detail::KeyReading<Pair>::key(CText path) const {
    return required(findKey(path), "getKey");
}

} // namespace tarvo
