#pragma once
// The steps of the elimination as the equations window and the report show them: the words
// of each row operation and the whole matrix after it, in decimals or in exact fractions.

#include "analysis/row_operation_text.h"
#include "tables/workspace.h"

#include <string>
#include <vector>

namespace ampora {

struct ShownStep {
    RowOperationWords words;        // empty for the matrix as set up
    std::vector<std::string> cells; // row by row, NumUnknowns + 1 to a row
    int changedRow = 0;             // 0 for none
    int otherChangedRow = 0;        // the second row of a swap
    int pivotRow = 0;               // the pivot the step works with; 0 for none
    int pivotColumn = 0;
};

struct ShownSteps {
    std::vector<ShownStep> steps; // the matrix as set up first, the reduced form last
    // The solutions read off the reduced form, as equations ("V2=660/101"); empty when a
    // column has no pivot.
    std::vector<std::string> solutions;
    bool fractions = false; // false also when fractions were asked for but cannot be had
};

// Decimals of `sigFigs` figures, or with `fractions` exact fractions where the exact
// elimination can follow the recorded one (a fraction of more than 12 digits shown as its
// decimal). The solver's last touch, clearing leftovers below 1e-10, is no step of its
// own: in decimals such an entry reads 0 already.
ShownSteps ShowRowOperations(const Workspace& ws, bool fractions, int sigFigs);

inline constexpr const char* kSetUpWords = "The augmented matrix as set up";

} // namespace ampora
