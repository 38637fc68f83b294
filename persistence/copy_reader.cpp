#include "persistence/copy_reader.h"

#include "persistence/source_reader.h"
#include "tarvo/array.hpp"

#include <cstddef>
#include <deque>
#include <utility>

namespace TARVO {

namespace {

using Table = IVaskPersistReaderTable;

// Has the reader fill a value of its kind. A number goes straight to its place, and what has a pair
// of its own is filled through that.
template <std::size_t Kind, class Slot>
void readInto(TARVOPersistenceValue& value, IVaskPersistReader* source, Slot Table::*slot,
              IVaskString* name) {
    auto& content = value.content.emplace<Kind>();
    if constexpr (requires { content.pair(); })
        callReader(source, slot, name, content.pair());
    else
        callReader(source, slot, name, &content);
}

void copyValue(TARVOPersistenceValue& value, IVaskPersistReader* source, IVaskString* name) {
    std::uint32_t kind = 0;
    callReader(source, &Table::GetValueType, name, &kind);
    switch (kind) {
    case TARVO_PERSIST_REAL:
        return readInto<TARVO_PERSIST_REAL>(value, source, &Table::GetReal, name);
    case TARVO_PERSIST_INTEGER:
        return readInto<TARVO_PERSIST_INTEGER>(value, source, &Table::GetInteger, name);
    case TARVO_PERSIST_BOOLEAN:
        return readInto<TARVO_PERSIST_BOOLEAN>(value, source, &Table::GetBoolean, name);
    case TARVO_PERSIST_STRING:
        return readInto<TARVO_PERSIST_STRING>(value, source, &Table::GetString, name);
    case TARVO_PERSIST_ENUMERATION:
        return readInto<TARVO_PERSIST_ENUMERATION>(value, source, &Table::GetEnumeration, name);
    case TARVO_PERSIST_VALUE:
        return readInto<TARVO_PERSIST_VALUE>(value, source, &Table::GetValue, name);
    case TARVO_PERSIST_REAL_ARRAY:
        return readInto<TARVO_PERSIST_REAL_ARRAY>(value, source, &Table::GetArrayReal, name);
    case TARVO_PERSIST_INTEGER_ARRAY:
        return readInto<TARVO_PERSIST_INTEGER_ARRAY>(value, source, &Table::GetArrayInteger, name);
    case TARVO_PERSIST_BOOLEAN_ARRAY:
        return readInto<TARVO_PERSIST_BOOLEAN_ARRAY>(value, source, &Table::GetArrayBoolean, name);
    case TARVO_PERSIST_STRING_ARRAY:
        return readInto<TARVO_PERSIST_STRING_ARRAY>(value, source, &Table::GetArrayString, name);
    case TARVO_PERSIST_ENUMERATION_ARRAY:
        return readInto<TARVO_PERSIST_ENUMERATION_ARRAY>(value, source, &Table::GetArrayEnumeration,
                                                         name);
    case TARVO_PERSIST_VALUE_ARRAY:
        return readInto<TARVO_PERSIST_VALUE_ARRAY>(value, source, &Table::GetArrayValue, name);
    case TARVO_PERSIST_BYTE_ARRAY:
        return readInto<TARVO_PERSIST_BYTE_ARRAY>(value, source, &Table::GetArrayByte, name);
    default:
        throw vask_link_error(RC_END_OF_DATA);
    }
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
            tarvo::Reference<IVaskPersistReader> owned;
            callReader(last.source, &Table::GetNode, name.pair(), owned.out());
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
