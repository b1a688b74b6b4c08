#pragma once
// Numbers as text without the locale: the shortest text that reads back to the same
// value (an integer has no point), and the matching tolerant parsers.

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

} // namespace ampora
