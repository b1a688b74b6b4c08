#pragma once
// Gauss-Jordan elimination of the augmented matrix to reduced row echelon form. The
// student sees this very matrix, so the steps are fixed: the largest pivot (the upper row
// on ties), exact 1 and 0 where they belong, and tiny leftovers shown as 0.

#include "tables/analysis_tables.h"

#include <cstdint>

namespace ampora {

// Reduces rows 1..rows, columns 1..columns + 1 of the matrix in place; column columns + 1
// holds the right-hand sides. A column whose largest remaining entry is 1e-10 or less gets
// no pivot. Never allocates unless asked to record, never fails on numbers; sizes beyond
// 20 x 21 throw SlotOutOfRange. With `record`, it is replaced by the operations performed,
// in order: a division by a pivot of exactly 1 and the subtraction of a zero multiple are
// skipped, and so are not there.
void Solve(AugmentedMatrix& matrix, int rows, int columns, RowOperations* record = nullptr);

// Takes recorded operations again, one at a time, with the solver's own arithmetic, so that
// the matrix after each is the one the solver held at that point, to the bit. Operations
// must come from Solve on the same start.
class RowOperationReplay {
  public:
    RowOperationReplay(const AugmentedMatrix& start, int rows, int columns);

    void Apply(const RowOperation& operation);
    // The solver's last touch: every entry below 1e-10 in size becomes exactly 0.
    void ClearNegligible();

    const AugmentedMatrix& Matrix() const { return matrix_; }

  private:
    AugmentedMatrix matrix_;
    int rows_ = 0;
    int columns_ = 0;
    std::uint32_t closed_ = 0; // one bit per pivot column already done, from bit 0
};

} // namespace ampora
