#pragma once
// The node-to-node chains that leave a node, which the supernodes, the node equations and
// the battery currents all ask each node for.

#include "tables/analysis_tables.h"

#include <vector>

namespace ampora {

// The chain slots among 1..NumBranches that start at a node slot, in slot order; none for a
// slot outside the node table, which no chain can start at. Throws for a count of chains
// past the table.
std::vector<int> ChainsFrom(const Topology& topology, int nodeSlot);

} // namespace ampora
