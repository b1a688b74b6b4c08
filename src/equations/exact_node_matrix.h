#pragma once
// The augmented matrix of the node equations in exact fractions, and its elimination.

#include "analysis/exact_elimination.h"
#include "tables/workspace.h"

#include <optional>

namespace ampora {

// Each row as WriteNodeEquations loads it, every chain number taken at the exact value of
// the text the equations show for it (a resistance of 0.175 is 7/40, not the single nearest
// to it), so that the fractions match what the student reads. Nothing without unknowns or
// when a number has no such text (an overflowed sum). Defined beside the decimal loading.
std::optional<ExactMatrix> ExactNodeMatrix(const Workspace& ws);

// The matrix above taken through the operations the decimal elimination recorded.
std::optional<ExactElimination> ExactNodeElimination(const Workspace& ws);

} // namespace ampora
