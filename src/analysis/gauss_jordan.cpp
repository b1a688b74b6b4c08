#include "analysis/gauss_jordan.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace ampora {

namespace {

// Absolute on purpose: the student's matrices hold values of everyday size.
constexpr double kNegligible = 1e-10;

// Every cell of the row but the one in column `skip`, which the caller sets itself; done
// on each side of it, so that the loops need no test per cell.
template <typename Change> void ForAllBut(std::span<double> row, std::size_t skip, Change change) {
    for (std::size_t k = 0; k < skip; ++k) {
        change(row[k], k);
    }
    for (std::size_t k = skip + 1; k < row.size(); ++k) {
        change(row[k], k);
    }
}

bool AllFinite(std::span<const double> cells) {
    return std::all_of(cells.begin(), cells.end(), [](double x) { return std::isfinite(x); });
}

} // namespace

void Solve(AugmentedMatrix& matrix, int rows, int columns) {
    if (rows <= 0 || columns < 0) {
        return;
    }
    matrix(rows, columns + 1); // checks the size once, before anything changes
    // Cells 1..columns + 1 of a row, which the check above keeps inside the matrix.
    const auto width = static_cast<std::size_t>(columns + 1);
    const auto row = [&matrix, width](int i) { return std::span<double>(&matrix(i, 1), width); };
    int r = 1;
    for (std::size_t c = 0; c + 1 < width; ++c) {
        int pivot = 0;
        double best = 0;
        for (int i = r; i <= rows; ++i) {
            const double size = std::fabs(row(i)[c]);
            if (size > best) {
                best = size;
                pivot = i;
            }
        }
        if (!(best > kNegligible)) {
            continue;
        }
        const std::span<double> pivotRow = row(r);
        if (pivot != r) {
            std::swap_ranges(pivotRow.begin(), pivotRow.end(), row(pivot).begin());
        }
        const double p = pivotRow[c];
        ForAllBut(pivotRow, c, [p](double& cell, std::size_t) { cell /= p; });
        pivotRow[c] = 1.0;
        // Subtracting 0 times a finite row changes at most the sign of a zero, and the
        // clean-up below turns every zero into +0: such rows are left as they are. Zero
        // times an infinity is not zero, so a row with one is subtracted everywhere.
        const bool finite = AllFinite(pivotRow);
        for (int i = 1; i <= rows; ++i) {
            if (i == r) {
                continue;
            }
            const std::span<double> other = row(i);
            const double f = other[c];
            if (f != 0 || !finite) {
                ForAllBut(other, c,
                          [f, pivotRow](double& cell, std::size_t k) { cell -= f * pivotRow[k]; });
            }
            other[c] = 0.0;
        }
        ++r;
    }
    for (int i = 1; i <= rows; ++i) {
        for (double& cell : row(i)) {
            if (std::fabs(cell) < kNegligible) {
                cell = 0.0;
            }
        }
    }
}

} // namespace ampora
