#pragma once
// Traces the chains of wires between the nodes: from every node along each of its wires,
// from every loose end, and around the closed loops that touch no node.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"

namespace ampora {

// Fills the chain table in the order node-to-node chains and stubs (as met), chains from
// loose ends, loops; every branch between two nodes appears twice, once from each end.
// Throws SlotOutOfRange past the chain slots (a circuit that fits the node and loose-end
// tables never gets there); the wires are live again either way.
void TraceBranches(Circuit& circuit, Topology& topology);

// All chains recorded, of the four kinds.
int NumChains(const Topology& topology);

} // namespace ampora
