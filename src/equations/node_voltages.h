#pragma once

#include "tables/workspace.h"

namespace ampora {

// Reads the node voltages off the reduced matrix: each variable's value, every supernode
// member through its anchor, the reference at 0. Throws CannotSolve when the system left
// a voltage undetermined (more than the one free voltage a circuit without reference has)
// or contradicts itself.
void ReadNodeVoltages(Workspace& ws);

// Without a reference the solution gives one voltage the value 0: that of the unknown
// whose column of the reduced matrix has no leading 1 (for a supernode, its anchor's).
// Returns the number of that unknown; the last when every column has its leading 1 (the
// redundancy lost to rounding); 0 with a reference or without unknowns.
int ZeroVariable(const Workspace& ws);

// Before the equations are written the reference node takes position 1 of the node order,
// whatever its name sorts to.
void PutReferenceFirst(Workspace& ws);

} // namespace ampora
