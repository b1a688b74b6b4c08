#include "analysis/format_number.h"

#include "document/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace ampora {

namespace {

// Scientific text with the pattern "0.00E+0". to_chars rounds the exact binary value to
// nearest with ties to even, and unlike printf it never looks at the locale.
std::string ScientificText(double value, int sigFigs) {
    char buffer[64];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value,
                                       std::chars_format::scientific, sigFigs - 1);
    const std::string text(buffer, written.ptr);
    const auto e = text.find('e');
    std::string mantissa = text.substr(0, e);
    if (sigFigs == 1) {
        mantissa += '.'; // the pattern keeps its point even with no digit after it
    }
    const int exponent = std::atoi(text.c_str() + e + 1);
    return mantissa + "E" + (exponent < 0 ? "-" : "+") + std::to_string(std::abs(exponent));
}

std::string PlainText(double value) {
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return std::string(buffer, result.ptr);
}

} // namespace

std::string FormatNumber(double value, int sigFigs) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : (value < 0 ? "-Infinity" : "Infinity");
    }
    if (std::fabs(value) < 1e-8) {
        return "0";
    }
    if (sigFigs < 1) {
        sigFigs = 1;
    }
    const std::string scientific = ScientificText(value, sigFigs);
    if (std::fabs(value) > 0.0001 && std::fabs(value) < 10000) {
        return PlainText(ParseDouble(scientific).value_or(value));
    }
    return scientific;
}

} // namespace ampora
