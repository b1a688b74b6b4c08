#pragma once
// Numbers as text without the locale: the shortest text that reads back to the same
// value (an integer has no point), and the matching tolerant parsers.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ampora {

std::string ShortestText(float value);
// The same text written into [first, last), which must hold 32 characters; returns its end.
char* WriteShortestText(char* first, char* last, float value);
std::string ShortestText(double value);

// Whole text must be a finite decimal number that fits the type; blanks are not allowed.
std::optional<float> ParseFloat(std::string_view text);
std::optional<double> ParseDouble(std::string_view text);
std::optional<long long> ParseInteger(std::string_view text);

// A short whole number: an optional minus and one to seven digits, which a float holds
// exactly, so that it converts to what the parsers above give.
struct SmallWhole {
    std::int32_t magnitude = 0;
    bool negative = false;

    float AsFloat() const {
        const auto value = static_cast<float>(magnitude);
        return negative ? -value : value; // "-0" is negative zero, as from_chars reads it
    }
    long long AsInteger() const { return negative ? -magnitude : magnitude; }
};

// Reads the short whole number at the start of [first, last) into `whole`; returns the end
// of its digits, or `first` when there are none. Inline because the file reader runs it on
// nearly every field it meets.
inline const char* ScanSmallWhole(const char* first, const char* last, SmallWhole& whole) {
    constexpr std::ptrdiff_t kExactDigits = 7;
    whole.negative = first != last && *first == '-';
    const char* const digits = first + (whole.negative ? 1 : 0);
    const char* const stop = last - digits > kExactDigits ? digits + kExactDigits : last;
    const char* at = digits;
    std::int32_t magnitude = 0;
    while (at != stop && static_cast<unsigned char>(*at - '0') < 10) {
        magnitude = magnitude * 10 + (*at - '0');
        ++at;
    }
    whole.magnitude = magnitude;
    return at == digits ? first : at;
}

} // namespace ampora
