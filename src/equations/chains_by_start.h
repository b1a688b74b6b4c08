#pragma once
// The node-to-node chains grouped by the node they leave. The supernodes, the node
// equations and the battery currents all ask each node for its chains; grouped once, that
// costs one pass over the chain table instead of one pass per node asked.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"

#include <array>
#include <cstdint>
#include <span>

namespace ampora {

struct ChainsByStart {
    // Node n's chains are chains[n][0 .. count[n]). The rest of each row is left unwritten,
    // as filling it would cost more than the grouping; unsigned bytes may still be copied.
    std::array<std::array<std::uint8_t, kMaxChains>, kMaxNodes + 1> chains;
    std::array<std::uint8_t, kMaxNodes + 1> count{};
};

ChainsByStart GroupChainsByStart(const Topology& topology);

// The chain slots that start at a node slot, in slot order; none for a slot outside the
// node table, which no chain can start at.
std::span<const std::uint8_t> ChainsFrom(const ChainsByStart& grouped, int nodeSlot);

} // namespace ampora
