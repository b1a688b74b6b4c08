#pragma once
// Finds the nodes (points where three or more wire ends meet) and the loose ends (wire
// ends that touch nothing) of the cleaned-up wires.

#include "analysis/analysis_tables.h"
#include "document/circuit.h"

namespace ampora {

// Rebuilds NodeLabels and the loose-end table. A node at the point of a node of the
// previous run keeps that node's name; every other node is unnamed, "[ ]". Throws
// SlotOutOfRange when there are more than 20 nodes or loose ends, or when more than four
// wire ends meet at one point (a node holds four wires).
void FindNodes(Circuit& circuit, Topology& topology);

inline constexpr const char* kUnnamedNode = "[ ]";

} // namespace ampora
