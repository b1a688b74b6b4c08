#include "document/number_text.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace ampora {

namespace {

// Whole floats up to 99999 have their digits as shortest text: the exponent form is never
// shorter below 100000. Drawings are on a grid, so most coordinates take this short cut.
bool IsSmallWhole(float value) {
    return value >= -99999.0f && value <= 99999.0f &&
           value == static_cast<float>(static_cast<int>(value)) && value != 0;
}

template <typename T> std::string Shortest(T value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
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
    return std::to_chars(first, last, value).ptr;
}

std::string ShortestText(float value) {
    char buffer[64];
    return std::string(buffer, WriteShortestText(buffer, buffer + sizeof buffer, value));
}
std::string ShortestText(double value) {
    return Shortest(value);
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
