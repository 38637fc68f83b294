// Keys as callers change them. A key writer does two things with each change: it records it, so
// that a commit can replay it on whatever the file holds by then, and it carries it out at once on
// the writer's own state of the tree, so that reading through the writer shows it.
//
// That state shares its nodes with the tree that was loaded and with keys that were handed out. A
// node is copied before it is changed, together with those above it, unless it bears the writer's
// present edition: then the writer has made it since it last let anybody see a node.
#pragma once

#include "registry/registry_key.h"
#include "tarvo/registry_writer.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace TARVO {

// What the key writers of one writer have in common.
struct EditState {
    explicit EditState(bool allUsersScope) : allUsers(allUsersScope) { beginEdition(); }

    // From here on all nodes that there are count as seen by others.
    void beginEdition();

    const bool allUsers;
    Edition edition = kNoEdition;
    TreeMemory memory;
};

class TarvoRegistryKeyWriter final
    : public TarvoRegistryKeyImpl<IVaskRegistryKeyWriter, TarvoRegistryKeyWriter> {
  public:
    TarvoRegistryKeyWriter(std::shared_ptr<EditState> state, Reference<TarvoRegistry> node,
                           TarvoRegistryKeyWriter* parent);
    ~TarvoRegistryKeyWriter() override;

    // The node of this key in the writer's state; null if a commit found the key gone.
    const Reference<TarvoRegistry>& node() const noexcept {
        return state_->allUsers ? allUsersSide : userSide;
    }

    Result getKey(const char16_t* path, IVaskRegistryKey** key);
    Result createKey(const char16_t* path, IVaskRegistryKeyWriter** key);
    Result deleteKey(const char16_t* path);
    Result deleteValue(const char16_t* path, const char16_t* name);
    Result setStringValue(const char16_t* name, const char16_t* value);
    Result setIntegerValue(const char16_t* name, std::int32_t value);
    Result setUUIDValue(const char16_t* name, const UUID* value);
    Result setEmptyValue(const char16_t* name);

    // What createKey does, inside the library.
    Result makeKey(std::u16string_view path, Reference<TarvoRegistryKeyWriter>& key);

    // Applies what this key writer and those below it have recorded to a tree that nobody has seen,
    // whose nodes bear the present edition, and lets them stand on it from here on.
    void replayOn(Reference<TarvoRegistry> root);

  private:
    using Components = std::vector<std::u16string>;

    static const IVaskRegistryKeyWriterTable kTable;

    void setNode(Reference<TarvoRegistry> node) noexcept {
        (state_->allUsers ? allUsersSide : userSide) = std::move(node);
    }
    bool ownsNode() const noexcept { return node()->edition() == state_->edition; }
    TarvoRegistry& writableNode();
    Reference<TarvoRegistry> makeNode(std::u16string_view name);
    void storeValue(const std::u16string& name, const RegistryValue& value);
    Result setValue(const char16_t* name, RegistryValue value);

    TarvoRegistryKeyWriter& createChild(const std::u16string& name);
    TarvoRegistryKeyWriter* findKeyWriter(const Components& components, std::size_t leftOver);
    void applyPending(std::vector<TarvoRegistryKeyWriter*>& below);
    void leaveOut();

    std::shared_ptr<EditState> state_;
    TarvoRegistryKeyWriter* parent_; // null for the root, and for a key that was deleted

    std::unordered_set<std::u16string> removedKeys_;
    std::unordered_map<std::u16string, Reference<TarvoRegistryKeyWriter>> children_;
    std::unordered_set<std::u16string> removedValues_;
    std::unordered_map<std::u16string, RegistryValue> pendingValues_;

    Reference<TarvoRegistryKeyWriter> nextGoing_; // while the one above it is destroyed

    // Made only to reach something in or below an existing key: a commit doesn't make the key anew.
    bool onlyIfPresent_ = false;
};

} // namespace TARVO
