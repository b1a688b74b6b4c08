#include "analysis/gauss_jordan.h"

#include <algorithm>
#include <array>
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

// The columns that a step of the elimination still has to change. The pivot columns of the
// steps before hold exact zeros off their pivot rows, and subtracting a finite multiple of
// a zero changes at most its sign, which the clean-up at the end makes +0 anyway.
struct OpenColumns {
    std::array<std::size_t, kMatrixColumns> columns{};
    std::size_t count = 0;

    explicit OpenColumns(std::size_t width) {
        for (std::size_t k = 0; k < width; ++k) {
            columns[count++] = k;
        }
    }
    void Close(std::size_t column) {
        const auto end = columns.begin() + static_cast<std::ptrdiff_t>(count);
        count =
            static_cast<std::size_t>(std::remove(columns.begin(), end, column) - columns.begin());
    }
    std::span<const std::size_t> Open() const { return {columns.data(), count}; }
};

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
    OpenColumns open(width);
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
        open.Close(c);
        const double p = pivotRow[c];
        // Zero, and NaN left by an overflow, stay what they are when divided.
        for (const std::size_t k : open.Open()) {
            pivotRow[k] /= p;
        }
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
            const auto subtract = [f, pivotRow](double& cell, std::size_t k) {
                cell -= f * pivotRow[k];
            };
            if (finite && std::isfinite(f)) {
                if (f != 0) {
                    for (const std::size_t k : open.Open()) {
                        subtract(other[k], k);
                    }
                }
            } else {
                ForAllBut(other, c, subtract);
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
