#include "analysis/format_number.h"

#include "document/number_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
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

// The plain form of values of everyday size, the common case, worked out with integers:
// |value| = m * 2^k exactly, rounded to `figures` significant digits with ties to even on
// that exact value (as to_chars does), then written as the shortest decimal of the rounded
// value. With at most 15 figures the rounded decimal is the shortest text of the double
// nearest to it, so this is the text the general route produces. Empty when the value is
// not one this handles.
std::string PlainTextOfRounded(double value, int figures) {
    __extension__ typedef unsigned __int128 Wide; // m * 10^18 needs 113 bits
    const double magnitude = std::fabs(value);
    if (figures > 15 || !(magnitude > 0.0001 && magnitude < 10000)) {
        return {};
    }
    // Every value in that range is a normal double: its significand with the hidden bit
    // and its exponent read straight from the bits, as frexp would give them.
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const int binaryExponent = static_cast<int>(bits >> 52) - 1022;
    const std::uint64_t m = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    const int shift = 53 - binaryExponent; // magnitude = m / 2^shift, 39 <= shift <= 66
    constexpr std::array<std::uint64_t, 20> kPowers{1,
                                                    10,
                                                    100,
                                                    1000,
                                                    10000,
                                                    100000,
                                                    1000000,
                                                    10000000,
                                                    100000000,
                                                    1000000000,
                                                    10000000000,
                                                    100000000000,
                                                    1000000000000,
                                                    10000000000000,
                                                    100000000000000,
                                                    1000000000000000,
                                                    10000000000000000,
                                                    100000000000000000,
                                                    1000000000000000000,
                                                    10000000000000000000u};
    const auto power = [&](int n) { return kPowers[static_cast<std::size_t>(n)]; };
    // The decimal exponent: the largest e in -4..3 with magnitude >= 10^e.
    int exponent = 3;
    for (; exponent > -4; --exponent) {
        const bool atLeast = exponent >= 0 ? Wide{m} >= (Wide{power(exponent)} << shift)
                                           : Wide{m} * power(-exponent) >= (Wide{1} << shift);
        if (atLeast) {
            break;
        }
    }
    // digits = magnitude * 10^scale, rounded to nearest with ties to even. When the scale
    // is not negative the divisor is the power of two alone, so the quotient and remainder
    // are a shift and a mask rather than a 128-bit division.
    const int scale = figures - 1 - exponent;
    std::uint64_t digits = 0;
    bool roundUp = false;
    if (scale >= 0) {
        const Wide numerator = Wide{m} * power(scale);
        digits = static_cast<std::uint64_t>(numerator >> shift);
        const Wide remainder = numerator & ((Wide{1} << shift) - 1);
        const Wide half = Wide{1} << (shift - 1);
        roundUp = remainder > half || (remainder == half && digits % 2 == 1);
    } else {
        const Wide denominator = (Wide{1} << shift) * power(-scale);
        digits = static_cast<std::uint64_t>(Wide{m} / denominator);
        const Wide twice = 2 * (Wide{m} % denominator);
        roundUp = twice > denominator || (twice == denominator && digits % 2 == 1);
    }
    if (roundUp) {
        ++digits;
    }
    if (digits == power(figures)) { // rounded up to the next power of ten
        digits = power(figures - 1);
        ++exponent;
    }
    char buffer[32];
    const char* const text = buffer;
    const char* end = std::to_chars(buffer, buffer + sizeof buffer, digits).ptr;
    while (end - text > 1 && end[-1] == '0') {
        --end; // the shortest decimal has no trailing zeros
    }
    const auto length = static_cast<int>(end - text);
    // At most a sign, "0.", three zeros and 15 digits, or 15 digits and a point: the text
    // is put together on the stack and the string made once.
    char plain[32];
    char* at = plain;
    if (value < 0) {
        *at++ = '-';
    }
    if (exponent < 0) {
        *at++ = '0';
        *at++ = '.';
        at = std::fill_n(at, -exponent - 1, '0');
        at = std::copy(text, end, at);
    } else if (length <= exponent + 1) {
        at = std::copy(text, end, at);
        at = std::fill_n(at, exponent + 1 - length, '0');
    } else {
        at = std::copy(text, text + exponent + 1, at);
        *at++ = '.';
        at = std::copy(text + exponent + 1, end, at);
    }
    return std::string(plain, at);
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
    if (std::string plain = PlainTextOfRounded(value, sigFigs); !plain.empty()) {
        return plain;
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
