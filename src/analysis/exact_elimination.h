#pragma once
// The elimination again in exact fractions: the same operations on the same rows, with each
// number the exact quotient the decimals only approximate, so that a student can see that
// 1/10 + 1/30 is 2/15 and not 0.1333.

#include "tables/analysis_tables.h"

#include <boost/multiprecision/cpp_int.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ampora {

using Rational = boost::multiprecision::cpp_rational;

// The exact value of a decimal text as the program writes numbers ("-0.175", "12",
// "1.5E-20"); nothing for any other text (blanks, "inf", "nan", a lone point).
std::optional<Rational> RationalFromDecimal(std::string_view text);

// "p/q" in lowest terms with the sign on p, or "p" for a whole number.
std::string RationalText(const Rational& value);

// The digits of numerator and denominator together (a whole number has no denominator):
// 2/15 has 3, 12 has 2, -7/40 has 3.
int RationalDigits(const Rational& value);

// Rows 1..rows, columns 1..columns + 1 (the last holding the constants).
struct ExactMatrix {
    int rows = 0;
    int columns = 0;
    std::vector<Rational> cells;

    ExactMatrix() = default;
    ExactMatrix(int rowCount, int columnCount);
    Rational& operator()(int row, int column) { return cells[Index(row, column)]; }
    const Rational& operator()(int row, int column) const { return cells[Index(row, column)]; }

  private:
    std::size_t Index(int row, int column) const;
};

struct ExactStep {
    // What the row is multiplied by (a scale: one over the pivot), or the multiple of the
    // source row added to it; 1 for a swap.
    Rational factor;
    ExactMatrix after;
};

struct ExactElimination {
    std::vector<ExactStep> steps; // one for each recorded operation
    ExactMatrix reduced;
};

// Applies the operations recorded by the decimal elimination to the exact start, each
// factor worked out exactly from the exact rows. Nothing when the decimals and the exact
// numbers part ways: an exact pivot of 0, or a result that is not in reduced row echelon
// form because the decimal elimination passed over an entry that is exactly not zero.
std::optional<ExactElimination> EliminateExactly(const ExactMatrix& start,
                                                 const RowOperations& operations);

// True when the matrix is in reduced row echelon form over its `columns` coefficient columns.
bool IsReducedRowEchelon(const ExactMatrix& matrix);

} // namespace ampora
