#include "tables/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace ampora {

namespace {

// Whole floats of up to seven digits are held exactly and written as their digits, both
// as the shortest text and at seven digits. Drawings are on a grid, so most coordinates
// take this short cut.
bool IsSmallWhole(float value) {
    return value >= -9999999.0f && value <= 9999999.0f &&
           value == static_cast<float>(static_cast<int>(value)) && value != 0;
}

// More digits than this and a plain decimal is hard to read: 1E+16 rather than
// 10000000000000000, 1E-16 rather than 0.0000000000000001.
constexpr int kMostPlainDigits = 15;

// Writes the number whose significant digits are `digits` (no leading zero unless the
// number is 0) with the first digit in the place of 10^exponent.
char* WritePlain(char* out, bool negative, std::string_view digits, int exponent) {
    const int count = static_cast<int>(digits.size());
    const int plainDigits = exponent >= 0 ? std::max(count, exponent + 1) : count - exponent;
    if (negative) {
        *out++ = '-';
    }
    if (plainDigits > kMostPlainDigits) {
        *out++ = digits.front();
        if (count > 1) {
            *out++ = '.';
            out = std::copy(digits.begin() + 1, digits.end(), out);
        }
        *out++ = 'E';
        *out++ = exponent < 0 ? '-' : '+';
        return std::to_chars(out, out + 8, exponent < 0 ? -exponent : exponent).ptr;
    }
    if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -exponent - 1, '0');
        return std::copy(digits.begin(), digits.end(), out);
    }
    if (count <= exponent + 1) {
        out = std::copy(digits.begin(), digits.end(), out);
        return std::fill_n(out, exponent + 1 - count, '0');
    }
    out = std::copy_n(digits.begin(), exponent + 1, out);
    *out++ = '.';
    return std::copy(digits.begin() + exponent + 1, digits.end(), out);
}

// Takes scientific text from to_chars ("-1.2340e+05") apart into sign, significant digits
// without trailing zeros, and exponent, and writes it plainly.
char* WriteFromScientific(char* out, std::string_view scientific) {
    const bool negative = scientific.front() == '-';
    scientific.remove_prefix(negative ? 1 : 0);
    const std::size_t e = scientific.find('e');
    char digits[40];
    std::size_t count = 0;
    for (const char c : scientific.substr(0, e)) {
        if (c != '.') {
            digits[count++] = c;
        }
    }
    while (count > 1 && digits[count - 1] == '0') {
        --count;
    }
    std::string_view exponentText = scientific.substr(e + 1);
    exponentText.remove_prefix(exponentText.front() == '+' ? 1 : 0);
    int exponent = 0;
    std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    return WritePlain(out, negative, std::string_view(digits, count), exponent);
}

// The shortest digits that read back to the value, written plainly at `out`.
template <typename T> char* WriteShortestPlain(char* out, T value) {
    if (!std::isfinite(value)) { // an overflowed sum: "inf", "-inf" or "nan"
        return std::to_chars(out, out + 8, value).ptr;
    }
    char scientific[48];
    const auto written = std::to_chars(scientific, scientific + sizeof scientific, value,
                                       std::chars_format::scientific);
    return WriteFromScientific(out, std::string_view(scientific, written.ptr));
}

// A short whole number, so that converting it gives what from_chars gives.
std::optional<float> ParseSmallWhole(std::string_view text) {
    const char* last = text.data() + text.size();
    SmallWhole whole;
    const char* const end = ScanSmallWhole(text.data(), last, whole);
    if (end != last) {
        return std::nullopt;
    }
    return whole.AsFloat();
}

template <typename T> std::optional<T> Parse(std::string_view text) {
    if (text.empty()) {
        return std::nullopt;
    }
    // from_chars does not take a leading '+', which people do type.
    if (text.front() == '+') {
        text.remove_prefix(1);
        if (text.empty() || text.front() == '-' || text.front() == '+') {
            return std::nullopt;
        }
    }
    if constexpr (std::is_same_v<T, float>) {
        if (const auto whole = ParseSmallWhole(text)) {
            return whole;
        }
    }
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    if constexpr (std::is_floating_point_v<T>) {
        if (!std::isfinite(value)) {
            return std::nullopt;
        }
    }
    return value;
}

} // namespace

char* WriteShortestText(char* first, char* last, float value) {
    if (IsSmallWhole(value)) {
        return std::to_chars(first, last, static_cast<int>(value)).ptr;
    }
    return WriteShortestPlain(first, value);
}

char* WriteSingleText(char* first, char* last, float value) {
    if (IsSmallWhole(value)) {
        return std::to_chars(first, last, static_cast<int>(value)).ptr;
    }
    if (!std::isfinite(value)) {
        return std::to_chars(first, last, value).ptr;
    }
    // Seven significant digits, rounded from the single's exact value.
    char scientific[48];
    const auto written =
        std::to_chars(scientific, scientific + sizeof scientific, static_cast<double>(value),
                      std::chars_format::scientific, 6);
    return WriteFromScientific(first, std::string_view(scientific, written.ptr));
}

std::string SingleText(float value) {
    char buffer[64];
    return std::string(buffer, WriteSingleText(buffer, buffer + sizeof buffer, value));
}

std::string ShortestText(float value) {
    char buffer[64];
    return std::string(buffer, WriteShortestText(buffer, buffer + sizeof buffer, value));
}
std::string ShortestText(double value) {
    char buffer[64];
    return std::string(buffer, WriteShortestPlain(buffer, value));
}

std::optional<float> ParseFloat(std::string_view text) {
    return Parse<float>(text);
}
std::optional<double> ParseDouble(std::string_view text) {
    return Parse<double>(text);
}
std::optional<long long> ParseInteger(std::string_view text) {
    return Parse<long long>(text);
}

} // namespace ampora
