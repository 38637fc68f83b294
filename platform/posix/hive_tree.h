// The keys and values of one hive, which is all of the system registry below one root. Readers get
// a tree that never changes; a change copies the keys from the root down to its place, but those
// only that a reader may have. Names are compared without regard to case and spelled as first
// written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TARVO::platform {

struct LessWithoutCase {
    using is_transparent = void;
    bool operator()(std::u16string_view one, std::u16string_view other) const;
};

struct HiveValue {
    std::uint32_t type = 0;
    std::vector<std::byte> bytes;
};

struct HiveKey {
    using Values = std::map<std::u16string, HiveValue, LessWithoutCase>;
    using Subkeys = std::map<std::u16string, std::shared_ptr<HiveKey>, LessWithoutCase>;

    Values values; // the default value's name is empty
    Subkeys subkeys;
    std::uint64_t edition = 0; // of the tree, when this key was made
};

using ReadOnlyHiveKey = std::shared_ptr<const HiveKey>;

// Null if there is no such subkey.
ReadOnlyHiveKey subkeyOf(const HiveKey& key, std::u16string_view name);

// Takes the first name off a path of keys, with any separators around it. Empty if there is none.
std::u16string_view takeKeyName(std::u16string_view& path);

// Is there no surrogate without its other half?
bool isWellFormed(std::u16string_view text);

// Paths are names with one separator between them; the empty path is the root.
class HiveTree {
  public:
    // With the keys that every hive has.
    HiveTree();

    // What stands here now.
    ReadOnlyHiveKey root();

    bool has(std::u16string_view path) const;

    // The key of this path, to be changed before the next call of root(). Null if it isn't there.
    HiveKey* edit(std::u16string_view path);

    // The same; makes every key of the path that is missing. Null if the path is too deep or one of
    // its names can't be a key's.
    HiveKey* create(std::u16string_view path);

    // Removes the key of this path, which is not the root, with all that is below it. False if it
    // isn't there.
    bool remove(std::u16string_view path);

  private:
    HiveKey& descend(std::u16string_view path);
    HiveKey& changeable(std::shared_ptr<HiveKey>& key) const;
    void createStandardKeys();

    std::uint64_t edition_ = 0; // the keys of this edition are no reader's
    std::shared_ptr<HiveKey> root_ = std::make_shared<HiveKey>();
};

} // namespace TARVO::platform
