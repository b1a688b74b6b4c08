#pragma once
// Rewrites the wire table so that every touching point is a wire end: duplicates go,
// live wires move to the front, and wires are split where another wire ends on them.

#include "tables/circuit.h"

namespace ampora {

// Drops every live wire that repeats an earlier one, and every wire of zero length, which
// nobody can see or click. Returns true when anything was dropped.
bool RemoveDuplicateWires(Circuit& circuit);

// Moves the live wires, in slot order, to the front and lowers NumWires to their number.
// Returns true when the count changed. The undo marks of the wires then name other
// wires, so they are cleared.
bool CompactWires(Circuit& circuit);

// The whole clean-up: duplicates, compaction, splits, and duplicates again. Wires are
// split at the points where the end of another wire lies on them (T-junctions and
// overlapping collinear wires); wires that merely cross stay whole. Each split keeps the
// low part in its slot and puts the rest in the slot after the last. Throws
// SlotOutOfRange when a split needs a slot beyond the table's capacity.
void CleanUpWires(Circuit& circuit);

} // namespace ampora
