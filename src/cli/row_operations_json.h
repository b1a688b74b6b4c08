#pragma once
// The steps of the elimination in ampora-cli solve's JSON.

#include "cli/json_writer.h"
#include "tables/workspace.h"

namespace ampora::cli {

// "row_operations": one object per operation, in order, {"op": "swap"|"scale"|"add", "row",
// "source", "factor", "matrix"}, rows from 1; a scale multiplies row by factor, an add adds
// factor times source to row, a swap (factor 1) exchanges the two; matrix is the whole
// augmented matrix after the step. With `exact`, also "matrix_exact" and "rref_exact", and
// "factor_exact" and "matrix_exact" in each step, as "p/q" or "p" texts; null where the
// fractions cannot follow the decimal steps.
void WriteRowOperations(JsonWriter& json, const Workspace& ws, bool exact);

// The first n rows of the augmented matrix, each with its n + 1 columns, as an array of arrays.
void WriteMatrix(JsonWriter& json, const AugmentedMatrix& matrix, int n);

} // namespace ampora::cli
