#pragma once
// Finds the nodes (points where three or more wire ends meet) and the loose ends (wire
// ends that touch nothing) of the cleaned-up wires.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"

namespace ampora {

// How many nodes and loose ends the wires have, whether or not their tables hold them all.
struct FoundPoints {
    int nodes = 0;
    int looseEnds = 0;
};

// Rebuilds NodeLabels and the loose-end table. A node at the point of a node of the
// previous run keeps that node's name; every other node is unnamed, "[ ]". More than 20
// nodes leave the node table as it was; of more than 20 loose ends the first 20 are kept.
// Either way the counts found are returned. Throws SlotOutOfRange when more than four wire
// ends meet at one point (a node holds four wires).
FoundPoints FindNodes(Circuit& circuit, Topology& topology);

inline constexpr const char* kUnnamedNode = "[ ]";

} // namespace ampora
