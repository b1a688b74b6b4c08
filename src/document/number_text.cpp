#include "document/number_text.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace ampora {

namespace {

template <typename T> std::string Shortest(T value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
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

std::string ShortestText(float value) {
    return Shortest(value);
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
