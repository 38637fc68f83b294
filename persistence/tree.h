// The tree of saved state that every form of it is decoded into: nodes with named values and named
// child nodes. A tree is complete before a reader shows it and is never changed afterwards, so that
// it is read from any thread without a lock.
#pragma once

#include "core/text_hash.h"
#include "persistence/vask_value.h"
#include "tarvo/array.hpp"
#include "tarvo/persistence.h"
#include "tarvo/reference.hpp"
#include "tarvo/text.hpp"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>

namespace TARVO {

// One value. The kinds TARVO_PERSIST_REAL to TARVO_PERSIST_BYTE_ARRAY are the places of the
// alternatives, so that a value can't be of one kind and hold another.
struct TARVOPersistenceValue {
    using Content =
        std::variant<double, std::int32_t, std::uint32_t, tarvo::String, std::uint32_t,
                     VaskValueImpl, tarvo::ScalarArray<double>, tarvo::ScalarArray<std::int32_t>,
                     tarvo::ScalarArray<std::uint32_t>, tarvo::StringArray,
                     tarvo::ScalarArray<std::uint32_t>, tarvo::ObjectArray<VaskValueImpl>,
                     tarvo::ScalarArray<std::uint8_t>>;

    std::uint32_t type() const noexcept { return static_cast<std::uint32_t>(content.index()); }

    // Makes it a value of one of the kinds, and has its content filled in.
    template <class Fill>
    void fill(std::uint32_t kind, Fill&& fill) {
        [&]<std::size_t... Kinds>(std::index_sequence<Kinds...>) {
            static_cast<void>(((Kinds == kind && (fill(content.emplace<Kinds>()), true)) || ...));
        }
        (std::make_index_sequence<std::variant_size_v<Content>>());
    }

    Content content;
};

constexpr std::uint32_t kLastKind = TARVO_PERSIST_BYTE_ARRAY;
static_assert(std::variant_size_v<TARVOPersistenceValue::Content> == kLastKind + 1);

// The name of a kind as the bag form has it: "real", "int[]". `kind` is one of the kinds.
std::u16string_view textOfKind(std::uint32_t kind);
std::optional<std::uint32_t> kindOfText(std::u16string_view text);

// The same for the tags of values, TARVO_VALUE_STRING and so on.
std::u16string_view textOfTag(std::uint32_t tag);
std::optional<std::uint32_t> tagOfText(std::u16string_view text);

// No tree goes further below its root than this.
constexpr std::size_t kMostLevels = 1000;

// One node. It counts its references, so that a reader on it can outlive the tree above it. Its
// names and the entries of its maps stand in memory of its own, which only grows: a tree is built
// once.
class TARVOPersistenceNode {
  public:
    static tarvo::Reference<TARVOPersistenceNode> make() {
        return tarvo::Reference<TARVOPersistenceNode>::share(new TARVOPersistenceNode);
    }
    TARVOPersistenceNode(const TARVOPersistenceNode&) = delete;
    TARVOPersistenceNode& operator=(const TARVOPersistenceNode&) = delete;

    void addReference() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept;

    // The value of a name, a new one if there is none.
    TARVOPersistenceValue& addValue(std::u16string_view name);

    // A new child, in the place of the one that has its name if there is one.
    TARVOPersistenceNode& addNode(std::u16string_view name);

    // A name finds its entry without being copied. (The hash is kept with each entry as long as
    // computing it may, formally, raise.)
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view name) const {
            return static_cast<std::size_t>(hashOfText(name));
        }
    };
    struct NameEqual {
        using is_transparent = void;
        bool operator()(std::u16string_view left, std::u16string_view right) const noexcept {
            return left == right;
        }
    };
    using Name = std::pmr::u16string;
    template <class Entry>
    using NameMap = std::pmr::unordered_map<Name, Entry, NameHash, NameEqual>;

  private:
    static constexpr std::size_t kFirstMemory = 256; // most nodes are small

    std::pmr::monotonic_buffer_resource memory_{kFirstMemory};

  public:
    NameMap<TARVOPersistenceValue> values{&memory_};
    NameMap<tarvo::Reference<TARVOPersistenceNode>> nodes{&memory_};

  private:
    TARVOPersistenceNode() = default;
    ~TARVOPersistenceNode() = default;

    std::atomic<std::uint32_t> references_ = 0;
    TARVOPersistenceNode* nextToDestroy_ = nullptr;
};

} // namespace TARVO
