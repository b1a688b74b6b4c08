#pragma once
// The one routine that turns every computed value into text.

#include <cstddef>
#include <string>

namespace ampora {

// sigFigs significant figures (at least 1): plain decimals between 1e-4 and 1e4
// (both exclusive), scientific form such as 1.23E+4 outside, "0" below 1e-8.
// Rounding is to nearest with exact ties to even, everywhere the program rounds.
std::string FormatNumber(double value, int sigFigs);

// The most characters FormatNumber writes for a figure count: the scientific form takes a
// sign, a point, "E", the exponent's sign and up to three digits beside the figures, and the
// plain form of more than 15 figures up to 17 digits, a sign and "0.000".
constexpr std::size_t MaxFormattedSize(int sigFigs) {
    return static_cast<std::size_t>(sigFigs > 17 ? sigFigs : 17) + 8;
}

// FormatNumber's text written at `first`, which has room for MaxFormattedSize(sigFigs)
// characters; returns its end. For texts put together from several parts.
char* WriteFormattedNumber(char* first, double value, int sigFigs);

} // namespace ampora
