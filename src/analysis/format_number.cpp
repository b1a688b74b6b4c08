#include "analysis/format_number.h"

#include "tables/number_text.h"

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

// Powers of ten that fit 64 bits, for scaling and counting figures.
constexpr std::array<std::uint64_t, 20> kPowersOfTen{1,
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

std::uint64_t PowerOfTen(int n) {
    return kPowersOfTen[static_cast<std::size_t>(n)];
}

// The decimal exponent of a magnitude between 1e-4 and 1e4: the largest e in -4..3 with
// magnitude >= 10^e, exactly. 0.1, 0.01 and 0.001 are not doubles, but the doubles nearest
// to them lie above them, so each is the smallest double that reaches its power of ten and
// comparing with it is the exact comparison.
int DecimalExponent(double magnitude) {
    if (magnitude >= 1) {
        return magnitude >= 1000 ? 3 : magnitude >= 100 ? 2 : magnitude >= 10 ? 1 : 0;
    }
    return magnitude >= 0.1 ? -1 : magnitude >= 0.01 ? -2 : magnitude >= 0.001 ? -3 : -4;
}

// The plain form of values of everyday size, the common case, worked out with integers:
// |value| = m * 2^k exactly, rounded to `figures` significant digits with ties to even on
// that exact value (as to_chars does), then written as the shortest decimal of the rounded
// value. With at most 15 figures the rounded decimal is the shortest text of the double
// nearest to it, so this is the text the general route produces. Writes at most 21
// characters at `first` and returns their end, or nullptr when the value is not one this
// handles.
char* WritePlainTextOfRounded(char* first, double value, int figures) {
    __extension__ typedef unsigned __int128 Wide; // m * 10^18 needs 113 bits
    const double magnitude = std::fabs(value);
    if (figures > 15 || !(magnitude > 0.0001 && magnitude < 10000)) {
        return nullptr;
    }
    // Every value in that range is a normal double: its significand with the hidden bit
    // and its exponent read straight from the bits, as frexp would give them.
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const int binaryExponent = static_cast<int>(bits >> 52) - 1022;
    const std::uint64_t m = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    const int shift = 53 - binaryExponent; // magnitude = m / 2^shift, 39 <= shift <= 66
    int exponent = DecimalExponent(magnitude);
    // digits = magnitude * 10^scale, rounded to nearest with ties to even. When the scale
    // is not negative the divisor is the power of two alone, so the quotient and remainder
    // are a shift and a mask rather than a division.
    const int scale = figures - 1 - exponent;
    std::uint64_t digits = 0;
    bool roundUp = false;
    if (scale >= 0) {
        const Wide numerator = Wide{m} * PowerOfTen(scale);
        digits = static_cast<std::uint64_t>(numerator >> shift);
        const Wide remainder = numerator & ((Wide{1} << shift) - 1);
        const Wide half = Wide{1} << (shift - 1);
        roundUp = remainder > half || (remainder == half && digits % 2 == 1);
    } else {
        // Fewer figures than the whole part has: the magnitude is at least 10, so the shift
        // is at most 49 and the divisor, at most 2^49 * 1000, fits 64 bits.
        const std::uint64_t denominator = (std::uint64_t{1} << shift) * PowerOfTen(-scale);
        digits = m / denominator;
        const std::uint64_t twice = 2 * (m % denominator);
        roundUp = twice > denominator || (twice == denominator && digits % 2 == 1);
    }
    if (roundUp) {
        ++digits;
    }
    if (digits == PowerOfTen(figures)) { // rounded up to the next power of ten
        digits = PowerOfTen(figures - 1);
        ++exponent;
    }
    // digits now has exactly `figures` digits; the shortest decimal has no trailing zeros.
    int length = figures;
    while (length > 1 && digits % 10 == 0) {
        digits /= 10;
        --length;
    }
    char* at = first;
    if (value < 0) {
        *at++ = '-';
    }
    // Where the digits go and where the point falls among them, then the digits written
    // from the last one back.
    int point = 0; // digits before the point; 0 when there is no point among them
    if (exponent < 0) {
        *at++ = '0';
        *at++ = '.';
        at = std::fill_n(at, -exponent - 1, '0');
    } else if (length > exponent + 1) {
        point = exponent + 1;
    }
    char* const end = at + length + (point > 0 ? 1 : 0);
    char* digit = end;
    for (int written = length; written > 0; --written) {
        if (written == point) {
            *--digit = '.';
        }
        *--digit = static_cast<char>('0' + digits % 10);
        digits /= 10;
    }
    if (exponent >= 0 && length <= exponent + 1) {
        return std::fill_n(end, exponent + 1 - length, '0'); // a whole number
    }
    return end;
}

char* CopyText(char* first, std::string_view text) {
    return std::copy(text.begin(), text.end(), first);
}

// Every value the plain short cut leaves: the scientific form, or the plain form read back
// from it. Kept apart so that the common case does not set up its buffers.
char* WriteByLibraryRounding(char* first, double value, int sigFigs) {
    std::array<char, 96> buffer;
    std::string spill;
    const std::string_view text = ScientificText(value, sigFigs, buffer, spill);
    if (std::fabs(value) > 0.0001 && std::fabs(value) < 10000) {
        char fixed[400];
        const auto written =
            std::to_chars(fixed, fixed + sizeof fixed, ParseDouble(text).value_or(value),
                          std::chars_format::fixed);
        return CopyText(first,
                        std::string_view(fixed, static_cast<std::size_t>(written.ptr - fixed)));
    }
    return CopyText(first, text);
}

} // namespace

std::string FormatNumber(double value, int sigFigs) {
    std::array<char, 64> onStack;
    std::string onHeap; // only for more figures than anyone asks for
    char* first = onStack.data();
    if (MaxFormattedSize(sigFigs) > onStack.size()) {
        onHeap.resize(MaxFormattedSize(sigFigs));
        first = onHeap.data();
    }
    return std::string(first, WriteFormattedNumber(first, value, sigFigs));
}

char* WriteFormattedNumber(char* first, double value, int sigFigs) {
    if (!std::isfinite(value)) {
        return CopyText(first, std::isnan(value) ? "NaN" : (value < 0 ? "-Infinity" : "Infinity"));
    }
    if (std::fabs(value) < 1e-8) {
        return CopyText(first, "0");
    }
    if (sigFigs < 1) {
        sigFigs = 1;
    }
    if (char* end = WritePlainTextOfRounded(first, value, sigFigs)) {
        return end;
    }
    return WriteByLibraryRounding(first, value, sigFigs);
}

} // namespace ampora
