#include "persistence/copy_reader.h"

#include "persistence/source_reader.h"
#include "tarvo/array.hpp"

#include <array>
#include <cstddef>
#include <deque>
#include <utility>

namespace TARVO {

namespace {

using Table = IVaskPersistReaderTable;

// Has the reader fill a value of one kind. A number goes straight to its place, and what has a pair
// of its own is filled through that.
template <std::size_t Kind, auto getter>
void copyAs(TARVOPersistenceValue& value, IVaskPersistReader* source, IVaskString* name) {
    auto& content = value.content.emplace<Kind>();
    if constexpr (requires { content.pair(); })
        callReader(source, getter, name, content.pair());
    else
        callReader(source, getter, name, &content);
}

void copyValue(TARVOPersistenceValue& value, IVaskPersistReader* source, IVaskString* name) {
    static constexpr auto kCopies = std::array{
        copyAs<TARVO_PERSIST_REAL, &Table::GetReal>,
        copyAs<TARVO_PERSIST_INTEGER, &Table::GetInteger>,
        copyAs<TARVO_PERSIST_BOOLEAN, &Table::GetBoolean>,
        copyAs<TARVO_PERSIST_STRING, &Table::GetString>,
        copyAs<TARVO_PERSIST_ENUMERATION, &Table::GetEnumeration>,
        copyAs<TARVO_PERSIST_VALUE, &Table::GetValue>,
        copyAs<TARVO_PERSIST_REAL_ARRAY, &Table::GetArrayReal>,
        copyAs<TARVO_PERSIST_INTEGER_ARRAY, &Table::GetArrayInteger>,
        copyAs<TARVO_PERSIST_BOOLEAN_ARRAY, &Table::GetArrayBoolean>,
        copyAs<TARVO_PERSIST_STRING_ARRAY, &Table::GetArrayString>,
        copyAs<TARVO_PERSIST_ENUMERATION_ARRAY, &Table::GetArrayEnumeration>,
        copyAs<TARVO_PERSIST_VALUE_ARRAY, &Table::GetArrayValue>,
        copyAs<TARVO_PERSIST_BYTE_ARRAY, &Table::GetArrayByte>,
    };
    static_assert(kCopies.size() == kLastKind + 1);
    std::uint32_t kind = 0;
    callReader(source, &Table::GetValueType, name, &kind);
    if (kind > kLastKind)
        throw vask_link_error(RC_END_OF_DATA);
    kCopies[kind](value, source, name);
}

void copyValues(TARVOPersistenceNode& target, IVaskPersistReader* source) {
    tarvo::StringArray names;
    callReader(source, &Table::ValueNames, names.pair());
    for (tarvo::String& name : names.elements())
        copyValue(target.addValue(name.text()), source, name.pair());
}

// A node whose values are copied and whose child nodes are being copied.
struct OpenNode {
    TARVOPersistenceNode* target;
    IVaskPersistReader* source;
    tarvo::Reference<IVaskPersistReader> owned; // the source; not of the root, which is borrowed
    tarvo::StringArray names;                   // of the child nodes
    std::size_t next = 0;
};

// Nodes that have begun stand in a list, so that depth costs no stack.
class TreeCopier {
  public:
    ~TreeCopier() {
        while (!open_.empty())
            open_.pop_back(); // a child's reader goes before that of its parent
    }

    void copy(TARVOPersistenceNode& root, IVaskPersistReader* source) {
        begin(root, source, nullptr);
        while (!open_.empty()) {
            OpenNode& last = open_.back();
            if (last.next == last.names.elements().size()) {
                open_.pop_back();
                continue;
            }
            if (open_.size() > kMostLevels)
                throw vask_link_error(RC_BAD_DATA);
            tarvo::String& name = last.names.elements()[last.next++];
            TARVOPersistenceNode& child = last.target->addNode(name.text());
            auto owned = nodeOf(last.source, name.pair());
            IVaskPersistReader* const reader = owned.get();
            begin(child, reader, std::move(owned));
        }
    }

  private:
    void begin(TARVOPersistenceNode& target, IVaskPersistReader* source,
               tarvo::Reference<IVaskPersistReader> owned) {
        OpenNode& node = open_.emplace_back();
        node.target = &target;
        node.source = source;
        node.owned = std::move(owned);
        copyValues(target, source);
        callReader(source, &Table::NodeNames, node.names.pair());
    }

    std::deque<OpenNode> open_;
};

} // namespace

void copyReader(TARVOPersistenceNode& target, IVaskPersistReader* source) {
    TreeCopier().copy(target, source);
}

} // namespace TARVO
