#pragma once
// Numbers as text without the locale, written as a person writes them: plain decimals
// (100000, 0.0001, 2.5; an integer has no point), with an exponent only where the plain
// text would need more than 15 digits, and then as 1E+16 or 1.5E-20. And the matching
// tolerant parsers.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ampora {

// The shortest such text that reads back to the same value: for values the user typed
// or the file holds, which must survive a save and a read unchanged.
std::string ShortestText(float value);
// The same text written into [first, last), which must hold 32 characters; returns its end.
char* WriteShortestText(char* first, char* last, float value);
std::string ShortestText(double value);

// A value computed in single precision (a sum of battery voltages or of resistances),
// rounded to the 7 significant digits a single carries, so that 1.1 + 2.2 reads 3.3
// rather than the 3.3000002 the sum holds. Same plain style; same buffer rule.
char* WriteSingleText(char* first, char* last, float value);
std::string SingleText(float value);

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
// of its digits, or nullptr when there are none or more than seven. Inline because the file
// reader runs it on nearly every field it meets.
inline const char* ScanSmallWhole(const char* first, const char* last, SmallWhole& whole) {
    constexpr std::size_t kExactDigits = 7;
    if (last - first > static_cast<std::ptrdiff_t>(kExactDigits + 1)) {
        // Room for a minus, seven digits and the character after them: no end check per
        // digit, and the loop is unrolled, as nearly every field is one to four digits.
        whole.negative = *first == '-';
        const char* const digits = first + (whole.negative ? 1 : 0);
        std::int32_t magnitude = 0;
        std::size_t count = 0;
#pragma GCC unroll 8
        for (; count <= kExactDigits; ++count) {
            const auto digit = static_cast<unsigned char>(digits[count] - '0');
            if (digit > 9) {
                break;
            }
            magnitude = magnitude * 10 + digit;
        }
        // One to seven digits: the count less one wraps around when there are none.
        if (count - 1 >= kExactDigits) {
            return nullptr;
        }
        whole.magnitude = magnitude;
        return digits + count;
    }
    // At most eight characters: too few digits to overflow.
    whole.negative = first != last && *first == '-';
    const char* const digits = first + (whole.negative ? 1 : 0);
    const char* at = digits;
    std::int32_t magnitude = 0;
    while (at != last && static_cast<unsigned char>(*at - '0') < 10) {
        magnitude = magnitude * 10 + (*at - '0');
        ++at;
    }
    if (static_cast<std::size_t>(at - digits) - 1 >= kExactDigits) {
        return nullptr;
    }
    whole.magnitude = magnitude;
    return at;
}

} // namespace ampora
