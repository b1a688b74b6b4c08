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

// Cells 1..width of row i, where the caller has checked the size of the matrix once.
std::span<double> RowCells(AugmentedMatrix& matrix, int i, std::size_t width) {
    return std::span<double>(&matrix(i, 1), width);
}

// The pivot row divided by its pivot p in column c; the pivot itself becomes exactly 1.
// Zero, and NaN left by an overflow, stay what they are when divided.
void DivideByPivot(std::span<double> pivotRow, std::size_t c, double p, const OpenColumns& open) {
    for (const std::size_t k : open.Open()) {
        pivotRow[k] /= p;
    }
    pivotRow[c] = 1.0;
}

// Subtracting 0 times a finite row changes at most the sign of a zero, and the clean-up
// turns every zero into +0: such rows are left as they are. Zero times an infinity is not
// zero, so a row with one is subtracted everywhere. True when the row was changed.
bool Subtract(std::span<double> other, std::span<const double> pivotRow, std::size_t c, double f,
              bool finite, const OpenColumns& open) {
    const auto subtract = [f, pivotRow](double& cell, std::size_t k) { cell -= f * pivotRow[k]; };
    bool changed = true;
    if (finite && std::isfinite(f)) {
        if (f != 0) {
            for (const std::size_t k : open.Open()) {
                subtract(other[k], k);
            }
        } else {
            changed = false;
        }
    } else {
        ForAllBut(other, c, subtract);
    }
    other[c] = 0.0;
    return changed;
}

void ClearTiny(AugmentedMatrix& matrix, int rows, std::size_t width) {
    for (int i = 1; i <= rows; ++i) {
        for (double& cell : RowCells(matrix, i, width)) {
            if (std::fabs(cell) < kNegligible) {
                cell = 0.0;
            }
        }
    }
}

// A row or column number for the record; the size check keeps them within 1..21.
template <typename Index> std::int8_t Small(Index index) {
    return static_cast<std::int8_t>(index);
}

} // namespace

void Solve(AugmentedMatrix& matrix, int rows, int columns, RowOperations* record) {
    if (record != nullptr) {
        record->clear();
    }
    if (rows <= 0 || columns < 0) {
        return;
    }
    matrix(rows, columns + 1); // checks the size once, before anything changes
    const auto width = static_cast<std::size_t>(columns + 1);
    const auto row = [&matrix, width](int i) { return RowCells(matrix, i, width); };
    if (record != nullptr) {
        // A swap, a division and an addition to every other row for each column at most.
        record->reserve(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows + 1));
    }
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
        const auto column = Small(c + 1);
        if (pivot != r) {
            std::swap_ranges(pivotRow.begin(), pivotRow.end(), row(pivot).begin());
            if (record != nullptr) {
                record->push_back({RowOperationKind::Swap, Small(r), Small(pivot), column, 0});
            }
        }
        open.Close(c);
        const double p = pivotRow[c];
        if (p != 1.0) { // x / 1 is x, to the bit
            DivideByPivot(pivotRow, c, p, open);
            if (record != nullptr) {
                record->push_back({RowOperationKind::Scale, Small(r), Small(r), column, p});
            }
        }
        const bool finite = AllFinite(pivotRow);
        for (int i = 1; i <= rows; ++i) {
            if (i == r) {
                continue;
            }
            const double f = row(i)[c];
            if (Subtract(row(i), pivotRow, c, f, finite, open) && record != nullptr) {
                record->push_back({RowOperationKind::Add, Small(i), Small(r), column, -f});
            }
        }
        ++r;
    }
    ClearTiny(matrix, rows, width);
}

RowOperationReplay::RowOperationReplay(const AugmentedMatrix& start, int rows, int columns)
    : matrix_(start), rows_(std::max(rows, 0)), columns_(std::max(columns, 0)) {
    if (rows_ > 0) {
        matrix_(rows_, columns_ + 1); // the size, checked as Solve checks it
    }
}

void RowOperationReplay::Apply(const RowOperation& operation) {
    const auto width = static_cast<std::size_t>(columns_ + 1);
    const auto inside = [this](int i) { return i >= 1 && i <= rows_; };
    if (!inside(operation.row) || !inside(operation.source) || operation.column < 1 ||
        operation.column > columns_) {
        ThrowCellOutOfRange(operation.row, operation.column);
    }
    const auto c = static_cast<std::size_t>(operation.column - 1);
    OpenColumns open(width);
    for (std::size_t k = 0; k + 1 < width; ++k) {
        if ((closed_ >> k & 1u) != 0) {
            open.Close(k);
        }
    }
    const std::span<double> target = RowCells(matrix_, operation.row, width);
    const bool columnStarts = operation.kind != RowOperationKind::Swap && (closed_ >> c & 1u) == 0;
    if (columnStarts) {
        // The solver closes the pivot's column before it divides; the rows it then passes
        // over, holding a zero there already, get exactly +0 in it.
        const int pivotRow =
            operation.kind == RowOperationKind::Scale ? operation.row : operation.source;
        for (int i = 1; i <= rows_; ++i) {
            double& cell = matrix_(i, operation.column);
            if (i != pivotRow && cell == 0) {
                cell = 0.0;
            }
        }
        closed_ |= 1u << c;
    }
    open.Close(c);
    switch (operation.kind) {
    case RowOperationKind::Swap: {
        const std::span<double> other = RowCells(matrix_, operation.source, width);
        std::swap_ranges(target.begin(), target.end(), other.begin());
        break;
    }
    case RowOperationKind::Scale:
        DivideByPivot(target, c, operation.number, open);
        break;
    case RowOperationKind::Add: {
        const std::span<double> pivotRow = RowCells(matrix_, operation.source, width);
        Subtract(target, pivotRow, c, -operation.number, AllFinite(pivotRow), open);
        break;
    }
    }
}

void RowOperationReplay::ClearNegligible() {
    if (rows_ > 0) {
        ClearTiny(matrix_, rows_, static_cast<std::size_t>(columns_ + 1));
    }
}

} // namespace ampora
