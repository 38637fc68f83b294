// One saved state in the library's stream form and as a message of the peer: the same nodes, names
// and values.
#pragma once

#include "persistence/tree.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

constexpr int kNodes = 1'000;
constexpr int kValuesOfNode = 100; // mixed: each kind takes its turn
constexpr int kReals = 1'000'000;

struct SavedState {
    std::vector<std::uint8_t> stream;
    std::string message;
};

const SavedState& mixedState();

// A payload with one array of kReals reals.
std::vector<std::uint8_t> arrayPayload();

// A node with the values of one of mixedState's.
tarvo::Reference<TARVO::TARVOPersistenceNode> mixedNode(int number);

} // namespace bench
