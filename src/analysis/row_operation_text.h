#pragma once
// A row operation written as a textbook writes it: R1 ↔ R3, R2 ← R2 ÷ 0.175,
// R3 ← R3 − 0.286·R2. The number stands apart so that a picture can set it as a fraction.

#include "analysis/exact_elimination.h"

#include <string>

namespace ampora {

struct RowOperationWords {
    std::string before; // "R3 ← R3 − "
    std::string number; // "0.286", "2/15"; for a negative divisor "(-0.175)"; empty for a swap
    std::string after;  // "·R2"

    std::string Joined() const { return before + number + after; }
};

// In decimals of `sigFigs` figures.
RowOperationWords DescribeRowOperation(const RowOperation& operation, int sigFigs);

// In exact fractions: `factor` is the exact multiplier of the step (one over the pivot for
// a scale, written as the division by the pivot).
RowOperationWords DescribeRowOperation(const RowOperation& operation, const Rational& factor,
                                       int sigFigs);

// The fraction "p/q", or the decimal of `sigFigs` figures where the fraction would need
// more than 12 digits.
std::string FractionOrDecimal(const Rational& value, int sigFigs);

} // namespace ampora
