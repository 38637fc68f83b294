#include "registry/registry_key_writer.h"

#include "core/uuid.h"
#include "registry/writer_names.h"

#include <atomic>

namespace TARVO {

void EditState::beginEdition() {
    static std::atomic<Edition> last = kNoEdition;
    edition = ++last;
}

constinit const IVaskRegistryKeyWriterTable TarvoRegistryKeyWriter::kTable = {
    .addReference = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::addReference>,
    .release = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::release>,
    .getValueNames = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::getValueNames>,
    .getValueType = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::getValueType>,
    .getStringValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::getStringValue>,
    .getIntegerValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::getIntegerValue>,
    .getUUIDValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::getUUIDValue>,
    .getKeyNames = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::getKeyNames>,
    .getKey = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::getKey>,
    .isAllUsersValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::isAllUsersValue>,
    .createKey = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::createKey>,
    .deleteKey = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::deleteKey>,
    .deleteValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::deleteValue>,
    .setStringValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::setStringValue>,
    .setIntegerValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::setIntegerValue>,
    .setUUIDValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::setUUIDValue>,
    .setEmptyValue = slot<TarvoRegistryKeyWriter, &TarvoRegistryKeyWriter::setEmptyValue>,
};

TarvoRegistryKeyWriter::TarvoRegistryKeyWriter(std::shared_ptr<EditState> state,
                                               Reference<TarvoRegistry> node,
                                               TarvoRegistryKeyWriter* parent)
    : TarvoRegistryKeyImpl(&kTable, nullptr, nullptr), state_(std::move(state)), parent_(parent) {
    setNode(std::move(node));
}

// Key writers can stand as deep as a path is long, so those that go with this one give up their
// children before they go, and not one inside the other. A child that a caller holds lives on.
TarvoRegistryKeyWriter::~TarvoRegistryKeyWriter() {
    Reference<TarvoRegistryKeyWriter> going;
    const auto takeChildrenOf = [&going](TarvoRegistryKeyWriter& key) {
        for (auto& [name, child] : key.children_) {
            child->parent_ = nullptr;
            child->nextGoing_ = std::move(going);
            going = std::move(child);
        }
        key.children_.clear();
    };
    takeChildrenOf(*this);
    while (going) {
        const auto key = std::exchange(going, std::move(going->nextGoing_));
        if (key->isSoleReference())
            takeChildrenOf(*key);
    }
}

// ---- the writer's own nodes ----

// Everything from the nearest node above that is the writer's own is copied; the copies take the
// places of what they were copied from.
TarvoRegistry& TarvoRegistryKeyWriter::writableNode() {
    std::vector<TarvoRegistryKeyWriter*> shared;
    for (auto* key = this; key != nullptr && !key->ownsNode(); key = key->parent_)
        shared.push_back(key);
    for (auto next = shared.rbegin(); next != shared.rend(); ++next) {
        TarvoRegistryKeyWriter* const key = *next;
        auto copy = key->node()->copy(state_->memory, state_->edition);
        if (key->parent_ != nullptr)
            key->parent_->node()->subKeys.insert(state_->memory, copy);
        key->setNode(std::move(copy));
    }
    return *node();
}

Reference<TarvoRegistry> TarvoRegistryKeyWriter::makeNode(std::u16string_view name) {
    return TarvoRegistry::make(state_->memory, name, state_->edition);
}

void TarvoRegistryKeyWriter::storeValue(const std::u16string& name, const RegistryValue& value) {
    writableNode().values.insert(state_->memory, NamedValue::make(state_->memory, name, value.type,
                                                                  value.integer, value.text));
}

// ---- keys ----

// The key that is handed out shows the state of now, so none of its nodes may be changed any more.
Result TarvoRegistryKeyWriter::getKey(const char16_t* path, IVaskRegistryKey** key) {
    state_->beginEdition();
    return TarvoRegistryKeyImpl::getKey(path, key);
}

Result TarvoRegistryKeyWriter::createKey(const char16_t* path, IVaskRegistryKeyWriter** key) {
    if (path == nullptr || key == nullptr)
        return RC_NULL_POINTER;
    Reference<TarvoRegistryKeyWriter> made;
    if (const Result result = makeKey(path, made); result != RC_OK)
        return result;
    handOut(std::move(made), key);
    return RC_OK;
}

Result TarvoRegistryKeyWriter::makeKey(std::u16string_view path,
                                       Reference<TarvoRegistryKeyWriter>& key) {
    Components components;
    if (const Result result = splitKeyPath(path, components); result != RC_OK)
        return result;
    TarvoRegistryKeyWriter* reached = this;
    for (const std::u16string& name : components)
        reached = &reached->createChild(name);
    key = Reference<TarvoRegistryKeyWriter>::share(reached);
    return RC_OK;
}

TarvoRegistryKeyWriter& TarvoRegistryKeyWriter::createChild(const std::u16string& name) {
    auto childNode = Reference<TarvoRegistry>::share(node()->subKeys.find(name));
    if (!childNode) {
        childNode = makeNode(name);
        writableNode().subKeys.insert(state_->memory, childNode);
    }
    Reference<TarvoRegistryKeyWriter>& child = children_[name];
    if (!child)
        child = makeObject<TarvoRegistryKeyWriter>(state_, nullptr, this);
    child->onlyIfPresent_ = false;
    child->setNode(std::move(childNode)); // a commit may have left it without one
    return *child;
}

// Reaches the key writer at a path, all but the last components of it, through keys that are there.
// Null if one isn't.
TarvoRegistryKeyWriter* TarvoRegistryKeyWriter::findKeyWriter(const Components& components,
                                                              std::size_t leftOver) {
    TarvoRegistryKeyWriter* reached = this;
    for (std::size_t i = 0; i + leftOver < components.size(); ++i) {
        const std::u16string& name = components[i];
        const auto known = reached->children_.find(name);
        if (known != reached->children_.end()) {
            reached = known->second.get();
            continue;
        }
        TarvoRegistry* below = reached->node() ? reached->node()->subKeys.find(name) : nullptr;
        if (below == nullptr)
            return nullptr;
        auto child = makeObject<TarvoRegistryKeyWriter>(
            reached->state_, Reference<TarvoRegistry>::share(below), reached);
        child->onlyIfPresent_ = true;
        reached = reached->children_.emplace(name, std::move(child)).first->second.get();
    }
    return reached;
}

Result TarvoRegistryKeyWriter::deleteKey(const char16_t* path) {
    if (path == nullptr)
        return RC_NULL_POINTER;
    Components components;
    if (const Result result = splitKeyPath(path, components); result != RC_OK)
        return result;
    TarvoRegistryKeyWriter* reached = findKeyWriter(components, 1);
    if (reached == nullptr)
        return RC_OK; // a key that isn't there counts as deleted
    const std::u16string& name = components.back();
    reached->removedKeys_.insert(name);
    if (const auto child = reached->children_.find(name); child != reached->children_.end()) {
        child->second->parent_ = nullptr;
        reached->children_.erase(child);
    }
    if (reached->node() && reached->node()->subKeys.find(name) != nullptr)
        reached->writableNode().subKeys.remove(name);
    return RC_OK;
}

// ---- values ----

Result TarvoRegistryKeyWriter::deleteValue(const char16_t* path, const char16_t* name) {
    std::u16string folded;
    if (const Result result = takeValueName(name, folded); result != RC_OK)
        return result;
    TarvoRegistryKeyWriter* reached = this;
    if (path != nullptr && *path != u'\0') {
        Components components;
        if (const Result result = splitKeyPath(path, components); result != RC_OK)
            return result;
        reached = findKeyWriter(components, 0);
        if (reached == nullptr)
            return RC_OK;
    }
    reached->removedValues_.insert(folded);
    reached->pendingValues_.erase(folded);
    if (reached->node() && reached->node()->values.find(folded) != nullptr)
        reached->writableNode().values.remove(folded);
    return RC_OK;
}

Result TarvoRegistryKeyWriter::setValue(const char16_t* name, RegistryValue value) {
    std::u16string folded;
    if (const Result result = takeValueName(name, folded); result != RC_OK)
        return result;
    storeValue(folded, value);
    pendingValues_.insert_or_assign(std::move(folded), std::move(value));
    return RC_OK;
}

Result TarvoRegistryKeyWriter::setStringValue(const char16_t* name, const char16_t* value) {
    return setValue(name, {RegistryValueType::string, 0, value == nullptr ? u"" : value});
}

Result TarvoRegistryKeyWriter::setIntegerValue(const char16_t* name, std::int32_t value) {
    return setValue(name, {RegistryValueType::integer, value, {}});
}

Result TarvoRegistryKeyWriter::setUUIDValue(const char16_t* name, const UUID* value) {
    if (value == nullptr)
        return RC_NULL_POINTER;
    return setValue(name, {RegistryValueType::uuid, 0, std::u16string(UUIDText(*value).view())});
}

Result TarvoRegistryKeyWriter::setEmptyValue(const char16_t* name) {
    return setValue(name, {RegistryValueType::empty, 0, {}});
}

// ---- replay ----

void TarvoRegistryKeyWriter::replayOn(Reference<TarvoRegistry> root) {
    setNode(std::move(root));
    std::vector<TarvoRegistryKeyWriter*> pending = {this};
    while (!pending.empty()) {
        TarvoRegistryKeyWriter* key = pending.back();
        pending.pop_back();
        key->applyPending(pending);
    }
}

// The order decides what wins: a value that was deleted and then set is there, and a key that was
// deleted and then created holds what it was given since.
void TarvoRegistryKeyWriter::applyPending(std::vector<TarvoRegistryKeyWriter*>& below) {
    TarvoRegistry& target = *node();
    for (const std::u16string& name : removedValues_)
        target.values.remove(name);
    for (const auto& [name, value] : pendingValues_)
        storeValue(name, value);
    for (const std::u16string& name : removedKeys_)
        target.subKeys.remove(name);
    for (const auto& [name, child] : children_) {
        auto childNode = Reference<TarvoRegistry>::share(target.subKeys.find(name));
        if (!childNode && child->onlyIfPresent_) {
            child->leaveOut();
            continue;
        }
        if (!childNode) {
            childNode = makeNode(name);
            target.subKeys.insert(state_->memory, childNode);
        }
        child->setNode(std::move(childNode));
        below.push_back(child.get());
    }
}

// The key has vanished from the file, and so has everything below it.
void TarvoRegistryKeyWriter::leaveOut() {
    for (std::vector<TarvoRegistryKeyWriter*> pending = {this}; !pending.empty();) {
        TarvoRegistryKeyWriter* key = pending.back();
        pending.pop_back();
        key->setNode(nullptr);
        for (const auto& [name, child] : key->children_)
            pending.push_back(child.get());
    }
}

} // namespace TARVO
