#pragma once
// Gauss-Jordan elimination of the augmented matrix to reduced row echelon form. The
// student sees this very matrix, so the steps are fixed: the largest pivot (the upper row
// on ties), exact 1 and 0 where they belong, and tiny leftovers shown as 0.

#include "tables/analysis_tables.h"

namespace ampora {

// Reduces rows 1..rows, columns 1..columns + 1 of the matrix in place; column columns + 1
// holds the right-hand sides. A column whose largest remaining entry is 1e-10 or less gets
// no pivot. Never allocates, never fails on numbers; sizes beyond 20 x 21 throw
// SlotOutOfRange.
void Solve(AugmentedMatrix& matrix, int rows, int columns);

} // namespace ampora
