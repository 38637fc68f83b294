#include "persistence/bag_decoder.h"

#include "persistence/bag_item.h"
#include "persistence/source_reader.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace TARVO {

namespace {

using Table = IVaskPersistReaderTable;

// Cuts an entry at its last comma and gives what stands behind.
std::u16string_view cutLastField(std::u16string_view& entry) {
    const std::size_t comma = entry.rfind(u',');
    if (comma == std::u16string_view::npos)
        throw vask_link_error(RC_END_OF_DATA);
    const std::u16string_view field = entry.substr(comma + 1);
    entry = entry.substr(0, comma);
    return field;
}

std::uint32_t requireKnown(std::optional<std::uint32_t> number) {
    if (!number)
        throw vask_link_error(RC_END_OF_DATA);
    return *number;
}

void fillTagged(VaskValueImpl& value, std::uint32_t tag, const BagItem& item) {
    switch (tag) {
    case TARVO_VALUE_STRING:
        return value.setText(item.text());
    case TARVO_VALUE_INTEGER:
        return value.setInteger(item.integer());
    case TARVO_VALUE_BOOLEAN:
        return value.setBoolean(item.boolean());
    case TARVO_VALUE_REAL:
        return value.setReal(item.real());
    default:
        return value.setEmpty(); // what the bag holds for it isn't looked at
    }
}

template <std::size_t Kind>
void fillArray(TARVOPersistenceValue::Content& content, const BagItem& item) {
    item.fillArray(Kind, content.emplace<Kind>().pair());
}

// Fills a value of any kind but value.
void fill(TARVOPersistenceValue::Content& content, std::uint32_t kind, const BagItem& item) {
    switch (kind) {
    case TARVO_PERSIST_REAL:
        content.emplace<TARVO_PERSIST_REAL>(item.real());
        break;
    case TARVO_PERSIST_INTEGER:
        content.emplace<TARVO_PERSIST_INTEGER>(item.integer());
        break;
    case TARVO_PERSIST_BOOLEAN:
        content.emplace<TARVO_PERSIST_BOOLEAN>(item.boolean());
        break;
    case TARVO_PERSIST_STRING:
        content.emplace<TARVO_PERSIST_STRING>(item.text());
        break;
    case TARVO_PERSIST_ENUMERATION:
        content.emplace<TARVO_PERSIST_ENUMERATION>(item.enumeration());
        break;
    case TARVO_PERSIST_REAL_ARRAY:
        fillArray<TARVO_PERSIST_REAL_ARRAY>(content, item);
        break;
    case TARVO_PERSIST_INTEGER_ARRAY:
        fillArray<TARVO_PERSIST_INTEGER_ARRAY>(content, item);
        break;
    case TARVO_PERSIST_BOOLEAN_ARRAY:
        fillArray<TARVO_PERSIST_BOOLEAN_ARRAY>(content, item);
        break;
    case TARVO_PERSIST_STRING_ARRAY:
        fillArray<TARVO_PERSIST_STRING_ARRAY>(content, item);
        break;
    case TARVO_PERSIST_ENUMERATION_ARRAY:
        item.fillEnumerations(content.emplace<TARVO_PERSIST_ENUMERATION_ARRAY>());
        break;
    case TARVO_PERSIST_VALUE_ARRAY:
        item.fillValues(content.emplace<TARVO_PERSIST_VALUE_ARRAY>());
        break;
    default:
        fillArray<TARVO_PERSIST_BYTE_ARRAY>(content, item);
    }
}

class BagDecoder {
  public:
    explicit BagDecoder(IVaskPersistReader* bag) : bag_(bag) {}

    // Nodes that have begun stand in a list, so that depth costs no stack.
    void decode(TARVOPersistenceNode& root) {
        begin(root);
        while (!open_.empty()) {
            OpenNode& last = open_.back();
            if (last.next == last.names.strings().size()) {
                open_.pop_back();
                continue;
            }
            if (open_.size() > kMostLevels)
                throw vask_link_error(RC_BAD_DATA);
            const std::u16string& name = last.names.strings()[last.next++].text();
            if (last.node->nodes.contains(name) && ++repeats_ > kMostRepeats)
                throw vask_link_error(RC_BAD_DATA);
            prefix_.resize(last.prefixLength);
            prefix_.append(name).append(u"//");
            begin(last.node->addNode(name));
        }
    }

  private:
    struct OpenNode {
        TARVOPersistenceNode* node = nullptr;
        std::size_t prefixLength = 0;
        tarvo::StringArray names; // of the child nodes
        std::size_t next = 0;
    };

    void begin(TARVOPersistenceNode& node) {
        tarvo::StringArray entries;
        readList(u"valueNames", entries);
        for (const tarvo::String& entry : entries.strings())
            readValue(node, entry.text());
        OpenNode& opened = open_.emplace_back();
        opened.node = &node;
        opened.prefixLength = prefix_.size();
        readList(u"nodeNames", opened.names);
    }

    void readList(std::u16string_view name, tarvo::StringArray& list) {
        std::u16string key = prefix_;
        key.append(name);
        tarvo::StringWrapper item(key);
        const std::uint32_t kind = storedKind(item);
        if (BagItem(bag_, item.pair(), kind).isEmptyValue())
            return;
        if (kind != TARVO_PERSIST_STRING_ARRAY)
            throw vask_link_error(RC_BAD_DATA);
        callReader(bag_, &Table::GetArrayString, item.pair(), list.pair());
    }

    void readValue(TARVOPersistenceNode& node, std::u16string_view entry) {
        std::u16string key = prefix_;
        key.append(entry);
        tarvo::StringWrapper name(key);
        const BagItem item(bag_, name.pair(), storedKind(name));
        const std::uint32_t kind = requireKnown(kindOfText(cutLastField(entry)));
        if (kind == TARVO_PERSIST_VALUE) {
            const std::uint32_t tag = requireKnown(tagOfText(cutLastField(entry)));
            auto& content = node.addValue(entry).content;
            fillTagged(content.emplace<TARVO_PERSIST_VALUE>(), tag, item);
        } else {
            fill(node.addValue(entry).content, kind, item);
        }
    }

    std::uint32_t storedKind(tarvo::StringWrapper& name) {
        std::uint32_t kind = 0;
        callReader(bag_, &Table::GetValueType, name.pair(), &kind);
        return kind;
    }

    IVaskPersistReader* bag_;
    // A name that stands twice in a list has its node decoded twice, and on many levels that
    // doubles what there is to do on each.
    static constexpr std::size_t kMostRepeats = 100;

    std::size_t repeats_ = 0;
    std::u16string prefix_; // of the node that was begun last
    std::deque<OpenNode> open_;
};

} // namespace

tarvo::Reference<TARVOPersistenceNode> decodeBag(IVaskPersistReader* bag) {
    auto root = TARVOPersistenceNode::make();
    BagDecoder(bag).decode(*root);
    return root;
}

} // namespace TARVO
