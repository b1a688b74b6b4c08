#include "analysis/format_number.h"

#include "document/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace ampora {

namespace {

// Scientific text with the pattern "0.00E+0". to_chars rounds the exact binary value to
// nearest with ties to even, and unlike printf it never looks at the locale. Written into a
// buffer on the stack for every figure count that settings offer; more figures get one
// from the heap.
std::string_view ScientificText(double value, int sigFigs, std::array<char, 96>& buffer,
                                std::string& spill) {
    char* first = buffer.data();
    char* last = first + buffer.size() - 4; // room left for the point and the exponent
    if (sigFigs + 32 > static_cast<int>(buffer.size())) {
        spill.assign(static_cast<std::size_t>(sigFigs) + 64, ' ');
        first = spill.data();
        last = first + spill.size() - 4;
    }
    const auto written =
        std::to_chars(first, last, value, std::chars_format::scientific, sigFigs - 1);
    char* e = std::find(first, written.ptr, 'e');
    // The exponent as a sign and at least two digits; as few as it needs here.
    const bool negative = e + 1 < written.ptr && e[1] == '-';
    char* digits = e + 2;
    while (digits + 1 < written.ptr && *digits == '0') {
        ++digits;
    }
    const bool zero = digits + 1 == written.ptr && *digits == '0';
    char exponent[8];
    const std::size_t length = std::min<std::size_t>(
        static_cast<std::size_t>(std::max<std::ptrdiff_t>(written.ptr - digits, 0)), 6);
    std::copy(digits, digits + length, exponent);
    char* at = e;
    if (sigFigs == 1) {
        *at++ = '.'; // the pattern keeps its point even with no digit after it
    }
    *at++ = 'E';
    *at++ = negative && !zero ? '-' : '+';
    at = std::copy(exponent, exponent + length, at);
    return std::string_view(first, static_cast<std::size_t>(at - first));
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
    std::array<char, 96> buffer;
    std::string spill;
    const std::string_view text = ScientificText(value, sigFigs, buffer, spill);
    if (std::fabs(value) > 0.0001 && std::fabs(value) < 10000) {
        char plain[400];
        const auto written =
            std::to_chars(plain, plain + sizeof plain, ParseDouble(text).value_or(value),
                          std::chars_format::fixed);
        return std::string(plain, written.ptr);
    }
    return std::string(text);
}

} // namespace ampora
