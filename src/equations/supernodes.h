#pragma once

#include "tables/workspace.h"

namespace ampora {

// Joins the nodes linked by chains of batteries and wire into supernodes, gives every
// member but the anchor its alias, and rebuilds the equation variables: one per ordinary
// node other than the reference, one per supernode that does not hold the reference.
// Throws AnalysisFailure when two battery paths join the same members: identical ones
// cannot be solved for their currents, different ones contradict each other.
void GetSuperNodes(Workspace& ws);

} // namespace ampora
