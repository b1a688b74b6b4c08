#pragma once
// Reads an equation as a student types it, "(V1-V2)/10 + 0.5V4 = 2", into one linear form:
// everything brought to the left, a coefficient per named unknown and a constant. What
// cannot be read gets a message that says at which character and why.

#include <string>
#include <string_view>
#include <vector>

namespace ampora {

// The left side minus the right: sum of coefficients[k] * names[k], plus constant, = 0.
struct LinearSum {
    std::vector<double> coefficients; // one per name given to the reader
    double constant = 0;
};

struct WrittenDecimal {
    double value = 0;
    int digits = 0; // significant digits: 3 for "0.0333", 4 for "2.500"
};

struct StudentEquation {
    LinearSum sum;
    // The numbers written with a decimal point, which may be rounded values: a student who
    // writes 0.0333 for 1/30 wrote the equation to three figures.
    std::vector<WrittenDecimal> decimals;
    std::string error; // "at character 14: a closing parenthesis is missing"; empty when read

    bool Read() const { return error.empty(); }
};

// `names` are the names the equation may use (the nodes' names, the battery currents);
// where several match at a place, the longest is read. Besides them: numbers with a
// decimal point or an exponent, + - (also the Unicode minus) * / and parentheses, unary
// signs, a number directly before a name or a parenthesis ("0.5V1", "2(V1-V2)"), and
// exactly one "=". Products and quotients must keep the equation linear.
StudentEquation ReadStudentEquation(std::string_view text, const std::vector<std::string>& names);

} // namespace ampora
