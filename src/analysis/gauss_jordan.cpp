#include "analysis/gauss_jordan.h"

#include <cmath>
#include <utility>

namespace ampora {

namespace {

// Absolute on purpose: the student's matrices hold values of everyday size.
constexpr double kNegligible = 1e-10;

} // namespace

void Solve(AugmentedMatrix& matrix, int rows, int columns) {
    if (rows > 0 && columns >= 0) {
        matrix(rows, columns + 1); // checks the size once, before anything changes
    }
    const int last = columns + 1;
    int r = 1;
    for (int c = 1; c <= columns; ++c) {
        int pivot = 0;
        double best = 0;
        for (int i = r; i <= rows; ++i) {
            const double size = std::fabs(matrix(i, c));
            if (size > best) {
                best = size;
                pivot = i;
            }
        }
        if (!(best > kNegligible)) {
            continue;
        }
        if (pivot != r) {
            for (int k = 1; k <= last; ++k) {
                std::swap(matrix(r, k), matrix(pivot, k));
            }
        }
        const double p = matrix(r, c);
        for (int k = 1; k <= last; ++k) {
            if (k != c) {
                matrix(r, k) /= p;
            }
        }
        matrix(r, c) = 1.0;
        for (int i = 1; i <= rows; ++i) {
            if (i == r) {
                continue;
            }
            const double f = matrix(i, c);
            for (int k = 1; k <= last; ++k) {
                if (k != c) {
                    matrix(i, k) -= f * matrix(r, k);
                }
            }
            matrix(i, c) = 0.0;
        }
        ++r;
    }
    for (int i = 1; i <= rows; ++i) {
        for (int k = 1; k <= last; ++k) {
            if (std::fabs(matrix(i, k)) < kNegligible) {
                matrix(i, k) = 0.0;
            }
        }
    }
}

} // namespace ampora
