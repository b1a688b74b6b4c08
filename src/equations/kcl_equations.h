#pragma once
// The Kirchhoff's-current-law equation of every unknown: as first written, with its
// terms collected, and as a row of the augmented matrix.

#include "tables/workspace.h"

namespace ampora {

// Zeroes the whole matrix, then writes the equation of every variable in its three forms:
// first written, such as "(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0"; collected, such as
// "(1/10+1/5)*Va-(1/10)*Vb-(1/5)*Vc=-2/5+0.5"; and as its row of the matrix. A supernode's
// equation runs over all its members and leaves out the currents inside it. The three
// forms come from one reading of each chain, as they list the same terms.
void WriteNodeEquations(Workspace& ws);

} // namespace ampora
