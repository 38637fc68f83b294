// The tree of a scope: keys that hold values and further keys. A node that has been handed out is
// never changed, so trees are read from any thread without a lock; whoever changes one works on
// nodes that nobody else has seen.
//
// Nodes and values count their own references and carry their names with them, each in one piece of
// memory.
#pragma once

#include "registry/name_table.h"
#include "registry/plain_text.h"
#include "registry/tree_memory.h"
#include "tarvo/reference.hpp"

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

namespace TARVO {

enum class RegistryValueType : std::uint32_t { string = 0, integer = 1, uuid = 2, empty = 3 };

// What a value holds, apart from its name.
struct RegistryValue {
    RegistryValueType type = RegistryValueType::empty;
    std::int32_t integer = 0; // for type integer, else 0
    std::u16string text;      // for string the text, for uuid its text form, else empty
};

// A value in the tree, with its name. Never changed.
class NamedValue {
  public:
    // `name` is folded. The other arguments are as in RegistryValue.
    static tarvo::Reference<NamedValue> make(TreeMemory& memory, std::u16string_view name,
                                             RegistryValueType type, std::int32_t integer,
                                             std::u16string_view text);
    static tarvo::Reference<NamedValue> make(TreeMemory& memory, PlainText name,
                                             RegistryValueType type, PlainText text);
    NamedValue(const NamedValue&) = delete;
    NamedValue& operator=(const NamedValue&) = delete;

    void addReference() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept;

    std::uint32_t hash() const noexcept { return hash_; }
    RegistryValueType type() const noexcept { return type_; }
    std::int32_t integer() const noexcept { return integer_; }

    // Both end in a null character behind their last unit.
    std::u16string_view name() const noexcept { return {units(), nameLength_}; }
    std::u16string_view text() const noexcept { return {units() + nameLength_ + 1, textLength_}; }

  private:
    NamedValue() noexcept = default;
    ~NamedValue() = default;

    template <class Text>
    static NamedValue* makeOf(TreeMemory& memory, Text name, RegistryValueType type, Text text);

    // The units of the name and then of the text stand behind the object.
    const char16_t* units() const noexcept { return reinterpret_cast<const char16_t*>(this + 1); }

    std::atomic<std::uint32_t> references_ = 1;
    TreeMemory::Place place_ = 0;
    std::uint32_t hash_ = 0;
    std::uint32_t nameLength_ = 0;
    std::uint32_t textLength_ = 0;
    RegistryValueType type_ = RegistryValueType::empty;
    std::int32_t integer_ = 0;
};

// Tells who may change a node: it bears the edition of the writer that made it, for as long as
// nobody else has seen it. A node of no edition is never changed.
using Edition = std::uint64_t;
constexpr Edition kNoEdition = 0;

// One key of the tree.
class TarvoRegistry {
  public:
    // `name` is folded. A root has the empty name.
    static tarvo::Reference<TarvoRegistry> make(TreeMemory& memory, std::u16string_view name,
                                                Edition edition);
    static tarvo::Reference<TarvoRegistry> make(TreeMemory& memory, PlainText name,
                                                Edition edition);
    static tarvo::Reference<TarvoRegistry> makeRoot(Edition edition = kNoEdition);

    // A node of the same name with tables of its own that share this one's values and sub-keys.
    tarvo::Reference<TarvoRegistry> copy(TreeMemory& memory, Edition edition) const;

    TarvoRegistry(const TarvoRegistry&) = delete;
    TarvoRegistry& operator=(const TarvoRegistry&) = delete;

    void addReference() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept;

    Edition edition() const noexcept { return edition_; }
    std::uint32_t hash() const noexcept { return hash_; }

    // Ends in a null character behind its last unit.
    std::u16string_view name() const noexcept {
        return {reinterpret_cast<const char16_t*>(this + 1), nameLength_};
    }

    NameTable<TarvoRegistry> subKeys;
    NameTable<NamedValue> values;

  private:
    TarvoRegistry() noexcept = default;
    ~TarvoRegistry() = default;

    template <class Text>
    static tarvo::Reference<TarvoRegistry> makeOf(TreeMemory& memory, Text name, Edition edition);

    std::atomic<std::uint32_t> references_ = 1;
    TreeMemory::Place place_ = 0;
    std::uint32_t hash_ = 0;
    std::uint32_t nameLength_ = 0;
    Edition edition_ = kNoEdition;
    TarvoRegistry* nextToDestroy_ = nullptr;
};

// The key at a path below a node: components in any case, parted by / or \, with one separator
// allowed behind the last. A null path is the node itself; null if there is no such key.
TarvoRegistry* findKey(TarvoRegistry* node, const char16_t* path) noexcept;

} // namespace TARVO
