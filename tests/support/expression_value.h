#pragma once
// Evaluates the arithmetic of the equation texts (numbers, names, + - * / and
// parentheses) so the tests can check that what the student reads means what the matrix
// holds.

#include <map>
#include <optional>
#include <string>

namespace ampora::test {

// Nothing when the text is not an expression or names something unknown.
std::optional<double> ExpressionValue(const std::string& text,
                                      const std::map<std::string, double>& names);

} // namespace ampora::test
