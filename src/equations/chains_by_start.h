#pragma once
// The node-to-node chains grouped by the node they leave. The supernodes, the node
// equations and the battery currents all ask each node for its chains; grouped once, that
// costs one pass over the chain table instead of one pass per node asked.

#include "analysis/analysis_tables.h"
#include "document/circuit.h"

#include <array>
#include <cstdint>
#include <span>

namespace ampora {

struct ChainsByStart {
    std::array<std::int8_t, kMaxChains> chains{};   // chain slots, grouped by start node
    std::array<std::int8_t, kMaxNodes + 2> first{}; // node n's: chains[first[n] .. first[n+1])
};

ChainsByStart GroupChainsByStart(const Topology& topology);

// The chain slots that start at a node slot, in slot order; none for a slot outside the
// node table, which no chain can start at.
std::span<const std::int8_t> ChainsFrom(const ChainsByStart& grouped, int nodeSlot);

} // namespace ampora
