#include "analysis/format_number.h"

#include "tables/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace ampora {

namespace {

// The value in scientific form with the pattern "0.00E+0": one digit before the point,
// sigFigs - 1 after it, the exponent's sign always written and its digits as few as it
// needs. to_chars rounds the exact binary value to nearest with ties to even, and unlike
// printf it never looks at the locale.
std::string ScientificText(double value, int sigFigs) {
    std::string text(static_cast<std::size_t>(sigFigs) + 32, ' ');
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::scientific, sigFigs - 1);
    text.resize(static_cast<std::size_t>(written.ptr - text.data()));
    // to_chars writes "e", a sign and at least two digits: "1.23e+04".
    const std::size_t e = text.find('e');
    const char sign = text[e + 1];
    std::string_view digits = std::string_view(text).substr(e + 2);
    while (digits.size() > 1 && digits.front() == '0') {
        digits.remove_prefix(1);
    }
    std::string result = text.substr(0, e);
    if (sigFigs == 1) {
        result += '.'; // the pattern keeps its point even with no digit after it
    }
    result += 'E';
    result += digits == "0" ? '+' : sign;
    result += digits;
    return result;
}

// The shortest decimal text of the value, without exponent.
std::string PlainText(double value) {
    char text[400];
    const auto written = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed);
    return std::string(text, written.ptr);
}

} // namespace

std::string FormatNumber(double value, int sigFigs) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : (value < 0 ? "-Infinity" : "Infinity");
    }
    const double magnitude = std::fabs(value);
    if (magnitude < 1e-8) {
        return "0";
    }
    const std::string scientific = ScientificText(value, std::max(sigFigs, 1));
    if (magnitude > 0.0001 && magnitude < 10000) {
        // Rounded to the figures first, then shown plainly.
        return PlainText(ParseDouble(scientific).value_or(value));
    }
    return scientific;
}

} // namespace ampora
