// Goes through a tree of saved state. Everything comes in the order of the names, since the maps of
// a node have an order of their own, which differs from one run to the next.
#pragma once

#include "persistence/tree.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

template <class Map>
using SortedEntries = std::vector<std::pair<std::u16string_view, const typename Map::mapped_type*>>;

template <class Map>
SortedEntries<Map> sortedEntries(const Map& entries) {
    SortedEntries<Map> sorted;
    sorted.reserve(entries.size());
    for (const auto& [name, entry] : entries)
        sorted.emplace_back(name, &entry);
    std::ranges::sort(sorted, {}, [](const auto& entry) { return entry.first; });
    return sorted;
}

using NodeValues = SortedEntries<decltype(TARVO::TARVOPersistenceNode::values)>;

// Calls the writer for each node: `values(NodeValues, nodeCount)`, then for each child node
// `beginNode(name)` and the same of that node, and `endNode()`, for the root too. Depth costs no
// stack.
template <class Writer>
void walkState(const TARVO::TARVOPersistenceNode& root, Writer& writer) {
    struct OpenNode {
        SortedEntries<decltype(TARVO::TARVOPersistenceNode::nodes)> nodes;
        std::size_t next = 0;
    };
    std::vector<OpenNode> open;
    const auto enter = [&](const TARVO::TARVOPersistenceNode& node) {
        writer.values(sortedEntries(node.values), node.nodes.size());
        open.push_back({sortedEntries(node.nodes)});
    };
    enter(root);
    while (!open.empty()) {
        OpenNode& last = open.back();
        if (last.next < last.nodes.size()) {
            const auto& [name, node] = last.nodes[last.next++];
            writer.beginNode(name);
            enter(**node);
        } else {
            open.pop_back();
            writer.endNode();
        }
    }
}

} // namespace tool
