#include "tool/key_source.h"

#include "tarvo/tarvo.hpp"
#include "tool/failure.h"
#include "tool/registry_file.h"
#include "tool/text.h"

#include <algorithm>
#include <utility>

namespace tool {

namespace {

using TARVO::RegistryValueType;
using TARVO::TarvoRegistry;

std::string cannotOpen(std::u16string_view path) {
    return "cannot open the key " + toUtf8(path);
}

std::vector<std::u16string> sorted(std::vector<std::u16string> names) {
    std::ranges::sort(names);
    return names;
}

// A key of the library, which shows both scopes as one.
class MergedKey : public KeySource {
  public:
    explicit MergedKey(tarvo::Reference<IVaskRegistryKey> key) : key_(std::move(key)) {}

    std::vector<ShownValue> values() const override {
        std::vector<ShownValue> values;
        for (const std::u16string& name : names(key_->table->getValueNames))
            values.push_back(value(name));
        return values;
    }

    std::vector<std::u16string> subKeyNames() const override {
        return names(key_->table->getKeyNames);
    }

    std::unique_ptr<KeySource> open(const std::u16string& subKey) const override {
        tarvo::Reference<IVaskRegistryKey> key;
        require(key_->table->getKey(key_->me, subKey.c_str(), key.out()), cannotOpen(subKey));
        return std::make_unique<MergedKey>(std::move(key));
    }

  private:
    std::vector<std::u16string> names(TarvoResult (*slot)(void*, IVaskArray*)) const {
        tarvo::StringArray array;
        require(slot(key_->me, array.pair()), "cannot list a key");
        std::vector<std::u16string> names;
        for (const tarvo::String& name : array.strings())
            names.push_back(name.text());
        return sorted(std::move(names));
    }

    ShownValue value(const std::u16string& name) const {
        const IVaskRegistryKeyTable& slots = *key_->table;
        ShownValue value;
        value.name = toUtf8(name);
        const std::string attempt = "cannot read the value " + value.name;
        std::uint32_t allUsers = 0;
        require(slots.isAllUsersValue(key_->me, name.c_str(), &allUsers), attempt);
        value.allUsers = allUsers != 0;
        std::uint32_t type = 0;
        require(slots.getValueType(key_->me, name.c_str(), nullptr, &type), attempt);
        value.type = static_cast<RegistryValueType>(type);
        switch (value.type) {
        case RegistryValueType::string: {
            tarvo::String text;
            require(slots.getStringValue(key_->me, name.c_str(), nullptr, text.pair()), attempt);
            value.text = toUtf8(text.text());
            break;
        }
        case RegistryValueType::integer:
            require(slots.getIntegerValue(key_->me, name.c_str(), nullptr, &value.integer),
                    attempt);
            break;
        case RegistryValueType::uuid: {
            tarvo::UUID uuid;
            require(slots.getUUIDValue(key_->me, name.c_str(), nullptr, &uuid), attempt);
            value.text = toUtf8(uuid.string());
            break;
        }
        case RegistryValueType::empty:
            break;
        }
        return value;
    }

    tarvo::Reference<IVaskRegistryKey> key_;
};

// A key of a tree that one file holds.
class TreeKey : public KeySource {
  public:
    TreeKey(tarvo::Reference<TarvoRegistry> key, bool allUsers)
        : key_(std::move(key)), allUsers_(allUsers) {}

    std::vector<ShownValue> values() const override {
        std::vector<ShownValue> values;
        key_->values.forEach([&](const TARVO::NamedValue& value) {
            values.push_back({.name = toUtf8(value.name()),
                              .type = value.type(),
                              .text = toUtf8(value.text()),
                              .integer = value.integer(),
                              .allUsers = allUsers_});
        });
        std::ranges::sort(values, {}, &ShownValue::name);
        return values;
    }

    std::vector<std::u16string> subKeyNames() const override {
        std::vector<std::u16string> names;
        key_->subKeys.forEach([&](const TarvoRegistry& key) { names.emplace_back(key.name()); });
        return sorted(std::move(names));
    }

    std::unique_ptr<KeySource> open(const std::u16string& subKey) const override {
        return std::make_unique<TreeKey>(
            tarvo::Reference<TarvoRegistry>::share(key_->subKeys.find(subKey)), allUsers_);
    }

  private:
    tarvo::Reference<TarvoRegistry> key_;
    bool allUsers_;
};

// The node at a path as the library's own functions take it.
TarvoRegistry* find(TarvoRegistry* root, const std::u16string& path) {
    if (path.empty())
        return root;
    if (path.front() != u'/' && path.front() != u'\\')
        return nullptr;
    return TARVO::findKey(root, path.size() == 1 ? nullptr : path.c_str() + 1);
}

} // namespace

std::unique_ptr<KeySource> openMergedKey(const Library& library, const std::u16string& path) {
    tarvo::Reference<IVaskRegistryKey> key;
    require(library.openKey(path, key.out()), cannotOpen(path));
    return std::make_unique<MergedKey>(std::move(key));
}

std::unique_ptr<KeySource> openScopeKey(const Library& library, bool allUsers,
                                        const std::u16string& path) {
    const std::u16string filePath = library.registryPath(allUsers);
    const RegistryFile file = readRegistryFile(filePath);
    if (file.fault)
        throw Failure(describeFault(filePath, *file.fault), RC_BAD_REGISTRY_FILE);
    TarvoRegistry* node = find(file.root.get(), path);
    if (node == nullptr)
        throw Failure(cannotOpen(path), RC_NOT_FOUND);
    return std::make_unique<TreeKey>(tarvo::Reference<TarvoRegistry>::share(node), allUsers);
}

} // namespace tool
