#include "bench/state_data.h"

#include "bench/saved_state.pb.h"
#include "tool/stream_writer.h"

#include <numeric>

namespace bench {

namespace {

using TARVO::TARVOPersistenceNode;
using TARVO::TARVOPersistenceValue;

std::string nameOf(int number) {
    return "value " + std::to_string(number);
}

// What both forms hold under a number: one of seven kinds.
void fill(int number, TARVOPersistenceValue& value, Value& peer) {
    const double real = number / 8.0;
    switch (number % 7) {
    case 0:
        value.content.emplace<TARVO_PERSIST_REAL>(real);
        peer.set_real(real);
        break;
    case 1:
        value.content.emplace<TARVO_PERSIST_INTEGER>(number);
        peer.set_integer(number);
        break;
    case 2:
        value.content.emplace<TARVO_PERSIST_BOOLEAN>(1u);
        peer.set_boolean(true);
        break;
    case 3: {
        const std::string text = "the text of " + nameOf(number);
        value.content.emplace<TARVO_PERSIST_STRING>(std::u16string(text.begin(), text.end()));
        peer.set_text(text);
        break;
    }
    case 4:
        value.content.emplace<TARVO_PERSIST_ENUMERATION>(static_cast<std::uint32_t>(number));
        peer.set_enumeration(static_cast<std::uint32_t>(number));
        break;
    case 5:
        value.content.emplace<TARVO_PERSIST_VALUE>().setReal(real);
        peer.mutable_held()->set_real(real);
        break;
    default: {
        auto& reals = value.content.emplace<TARVO_PERSIST_REAL_ARRAY>().elements();
        for (int i = 0; i < 8; ++i) {
            reals.push_back(real + i);
            peer.mutable_reals()->add_items(real + i);
        }
    }
    }
}

void fillNode(int number, TARVOPersistenceNode& node, Node& peer) {
    for (int i = 0; i < kValuesOfNode; ++i) {
        const std::string name = nameOf(i);
        fill(number + i, node.addValue(std::u16string(name.begin(), name.end())),
             (*peer.mutable_values())[name]);
    }
}

SavedState makeMixedState() {
    const auto root = TARVOPersistenceNode::make();
    Node peer;
    for (int i = 0; i < kNodes; ++i) {
        const std::string name = "node " + std::to_string(i);
        fillNode(i, root->addNode(std::u16string(name.begin(), name.end())),
                 (*peer.mutable_nodes())[name]);
    }
    return {tool::encodeStream(*root), peer.SerializeAsString()};
}

} // namespace

const SavedState& mixedState() {
    static const SavedState state = makeMixedState();
    return state;
}

std::vector<std::uint8_t> arrayPayload() {
    const auto root = TARVOPersistenceNode::make();
    auto& reals = root->addValue(u"reals").content.emplace<TARVO_PERSIST_REAL_ARRAY>().elements();
    reals.resize(kReals);
    std::iota(reals.begin(), reals.end(), 0.5);
    return tool::encodeStream(*root);
}

tarvo::Reference<TARVOPersistenceNode> mixedNode(int number) {
    auto node = TARVOPersistenceNode::make();
    Node peer;
    fillNode(number, *node, peer);
    return node;
}

} // namespace bench
