#pragma once
// The one routine that turns every computed value into text.

#include <string>

namespace ampora {

// sigFigs significant figures (at least 1): plain decimals between 1e-4 and 1e4
// (both exclusive), scientific form such as 1.23E+4 outside, "0" below 1e-8.
// Rounding is to nearest with exact ties to even, everywhere the program rounds.
std::string FormatNumber(double value, int sigFigs);

} // namespace ampora
