// Keys of the stand-in. A key that is open for reading holds its part of a tree that nobody
// changes, so that nothing below it takes a lock or asks the system; one that is open for writing
// knows its path and has its hive do the work.
#include "platform/system_registry.h"

#include "platform/posix/hive.h"

#include <algorithm>
#include <memory>

namespace TARVO::platform {

// The way to the classes, where the views part.
enum class Place { root, software, classes, elsewhere };

// What a SystemKey points at.
struct OpenKey {
    Place place = Place::root;
    std::array<ReadOnlyHiveKey, 2> layers; // for reading: the user's goes before the machine's
    Hive* hive = nullptr;                  // for writing
    std::u16string path;                   // for writing: in the hive
};

struct SystemKeyAccess {
    static SystemKey make(OpenKey key) { return SystemKey{new OpenKey{std::move(key)}}; }
};

namespace {

const OpenKey& asKey(void* handle) {
    static const OpenKey none; // with it every call fails, as on Windows
    return handle ? *static_cast<const OpenKey*>(handle) : none;
}

bool isSameName(std::u16string_view one, std::u16string_view other) {
    return !LessWithoutCase{}(one, other) && !LessWithoutCase{}(other, one);
}

Place placeBelow(Place place, std::u16string_view name) {
    if (place == Place::root && isSameName(name, u"Software")) {
        return Place::software;
    }
    return place == Place::software && isSameName(name, u"Classes") ? Place::classes
                                                                    : Place::elsewhere;
}

// Takes a step for each key on a path, and those that a view puts between them. False if the path
// is none or a step gives false.
template <typename Step>
bool walk(Place& place, std::u16string_view path, RegistryView view, Step step) {
    if (path.starts_with(u'\\')) {
        return false;
    }
    for (auto name = takeKeyName(path); !name.empty(); name = takeKeyName(path)) {
        const bool isParting = place == Place::classes && isSameName(name, u"CLSID");
        if (isParting && view == RegistryView::view32 && !step(u"Wow6432Node")) {
            return false;
        }
        if (!step(name)) {
            return false;
        }
        place = placeBelow(place, name);
    }
    return true;
}

// Makes of a key that is open for reading one that is below it.
bool descend(OpenKey& key, std::u16string_view path, RegistryView view) {
    const auto isThere = [&key] {
        return key.layers[0] || key.layers[1];
    };
    return isThere() && walk(key.place, path, view, [&](std::u16string_view name) {
               for (auto& layer : key.layers) {
                   layer = layer ? subkeyOf(*layer, name) : nullptr;
               }
               return isThere();
           });
}

Hive& hiveOf(RegistryRoot root) {
    return root == RegistryRoot::currentUser ? Hive::ofUser() : Hive::ofMachine();
}

OpenKey readableRoot(RegistryRoot root) {
    OpenKey key;
    if (root == RegistryRoot::classesRoot) {
        key.layers = {Hive::ofUser().root(), Hive::ofMachine().root()};
        descend(key, u"Software\\Classes", RegistryView::either);
    } else {
        key.layers[0] = hiveOf(root).root();
    }
    return key;
}

// The same key, or what it shows now if it is open for writing.
OpenKey readable(const OpenKey& key) {
    if (!key.hive) {
        return key;
    }
    OpenKey result;
    result.layers[0] = key.hive->root();
    if (!descend(result, key.path, RegistryView::either)) {
        result.layers[0] = nullptr;
    }
    return result;
}

SystemKey openBelow(OpenKey key, const char16_t* path, RegistryView view) {
    if (!descend(key, path, view)) {
        return {};
    }
    return SystemKeyAccess::make(std::move(key));
}

// A key below one that is open for writing, whether it is there or not.
std::optional<OpenKey> writableBelow(const OpenKey& parent, const char16_t* path,
                                     RegistryView view) {
    OpenKey key = parent;
    const bool isPath = key.hive && walk(key.place, path, view, [&](std::u16string_view name) {
                            key.path += key.path.empty() ? u"" : u"\\";
                            key.path += name;
                            return true;
                        });
    return isPath ? std::optional{std::move(key)} : std::nullopt;
}

SystemKey openForWritingBelow(const OpenKey& parent, const char16_t* path, RegistryView view) {
    auto key = writableBelow(parent, path, view);
    if (!key || !key->hive->canWrite(key->path)) {
        return {};
    }
    return SystemKeyAccess::make(*std::move(key));
}

std::u16string_view nameOrDefault(const char16_t* name) {
    return name ? name : u"";
}

const HiveValue* valueOf(const OpenKey& key, const char16_t* name) {
    for (const auto& layer : key.layers) {
        if (layer) {
            const auto found = layer->values.find(nameOrDefault(name));
            if (found != layer->values.end()) {
                return &found->second;
            }
        }
    }
    return nullptr;
}

// The first name behind `last`, or of all; null if there is none.
const std::u16string* nextName(const OpenKey& key, std::optional<std::u16string_view> last) {
    const std::u16string* next = nullptr;
    for (const auto& layer : key.layers) {
        if (layer) {
            const auto& subkeys = layer->subkeys;
            const auto found = last ? subkeys.upper_bound(*last) : subkeys.begin();
            if (found != subkeys.end() && (!next || LessWithoutCase{}(found->first, *next))) {
                next = &found->first;
            }
        }
    }
    return next;
}

} // namespace

SystemKey SystemKey::open(RegistryRoot root, const char16_t* path, RegistryView view) {
    return openBelow(readableRoot(root), path, view);
}

SystemKey SystemKey::openForWriting(RegistryRoot root, const char16_t* path, RegistryView view) {
    if (root == RegistryRoot::classesRoot) {
        return {};
    }
    OpenKey key;
    key.hive = &hiveOf(root);
    return openForWritingBelow(key, path, view);
}

void SystemKey::close() {
    delete static_cast<OpenKey*>(std::exchange(handle_, nullptr));
}

SystemKey SystemKey::open(const char16_t* path, RegistryView view) const {
    return openBelow(readable(asKey(handle_)), path, view);
}

SystemKey SystemKey::openForWriting(const char16_t* path, RegistryView view) const {
    return openForWritingBelow(asKey(handle_), path, view);
}

SystemKey SystemKey::create(const char16_t* path, RegistryView view) const {
    auto key = writableBelow(asKey(handle_), path, view);
    if (!key) {
        return {};
    }
    const auto create = [newPath = key->path](HiveTree& tree) {
        return tree.create(newPath) != nullptr;
    };
    if (!key->hive->canWrite(key->path) && !key->hive->make(create)) {
        return {};
    }
    return SystemKeyAccess::make(*std::move(key));
}

std::optional<SystemValue> SystemKey::findValue(const char16_t* name) const {
    const HiveValue* const value = valueOf(asKey(handle_), name);
    return value ? std::optional{SystemValue{value->type, value->bytes.size()}} : std::nullopt;
}

std::optional<SystemValue> SystemKey::readValue(const char16_t* name,
                                                std::span<std::byte> buffer) const {
    const HiveValue* const value = valueOf(asKey(handle_), name);
    if (!value || value->bytes.size() > buffer.size()) {
        return std::nullopt;
    }
    std::ranges::copy(value->bytes, buffer.begin());
    return SystemValue{value->type, value->bytes.size()};
}

bool SystemKey::setValue(const char16_t* name, std::uint32_t type,
                         std::span<const std::byte> bytes) const {
    const OpenKey& key = asKey(handle_);
    if (!key.hive || !isWellFormed(nameOrDefault(name))) {
        return false;
    }
    return key.hive->make([path = key.path, name = std::u16string{nameOrDefault(name)},
                           value = HiveValue{type, {bytes.begin(), bytes.end()}}](HiveTree& tree) {
        HiveKey* const target = tree.edit(path);
        if (target) {
            target->values.insert_or_assign(name, value);
        }
        return target != nullptr;
    });
}

bool SystemKey::deleteTree(const char16_t* path, RegistryView view) const {
    const OpenKey& key = asKey(handle_);
    const auto target = writableBelow(key, path, view);
    if (!target || target->path == key.path) {
        return false;
    }
    return key.hive->make([target = target->path](HiveTree& tree) { return tree.remove(target); });
}

const char16_t* SubkeyNames::next() {
    std::optional<std::u16string_view> last;
    if (index_++ > 0) {
        last = name_.data();
    }
    const std::u16string* name = nullptr;
    while ((name = nextName(asKey(key_.handle_), last)) && name->size() >= name_.size()) {
        last = *name;
    }
    if (!name) {
        return nullptr;
    }
    name_[name->copy(name_.data(), name->size())] = u'\0';
    return name_.data();
}

RegistryBatch::RegistryBatch() {
    Hive::ofUser().beginBatch();
    Hive::ofMachine().beginBatch();
}

bool RegistryBatch::store() {
    if (!std::exchange(isOpen_, false)) {
        return true;
    }
    const bool user = Hive::ofUser().endBatch();
    return Hive::ofMachine().endBatch() && user;
}

} // namespace TARVO::platform
