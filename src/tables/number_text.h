#pragma once
// Numbers as text without the locale, written as a person writes them: plain decimals
// (100000, 0.0001, 2.5; an integer has no point), with an exponent only where the plain
// text would need more than 15 digits, and then as 1E+16 or 1.5E-20. And the matching
// tolerant parsers.

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

} // namespace ampora
