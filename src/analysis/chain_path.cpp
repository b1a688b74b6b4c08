#include "analysis/chain_path.h"

#include "document/number_text.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace ampora {

namespace {

float Coordinate(std::string_view text) {
    const auto value = ParseFloat(text);
    if (!value) {
        throw std::invalid_argument("not a path coordinate: " + std::string(text));
    }
    return *value;
}

} // namespace

void AppendPathPoint(std::string& path, Point point) {
    if (!path.empty()) {
        path += ';';
    }
    path += ShortestText(point.X);
    path += ',';
    path += ShortestText(point.Y);
}

std::vector<Point> PathPoints(const std::string& path) {
    std::vector<Point> points;
    std::string_view rest = path;
    while (!rest.empty()) {
        const auto semicolon = rest.find(';');
        const std::string_view item = rest.substr(0, semicolon);
        const auto comma = item.find(',');
        if (comma == std::string_view::npos) {
            throw std::invalid_argument("not a path point: " + std::string(item));
        }
        points.push_back(
            Point{Coordinate(item.substr(0, comma)), Coordinate(item.substr(comma + 1))});
        rest =
            semicolon == std::string_view::npos ? std::string_view{} : rest.substr(semicolon + 1);
    }
    return points;
}

bool IsReversedPath(const std::string& path, const std::string& other) {
    const std::vector<Point> points = PathPoints(path);
    const std::vector<Point> otherPoints = PathPoints(other);
    return points.size() == otherPoints.size() &&
           std::equal(points.begin(), points.end(), otherPoints.rbegin());
}

} // namespace ampora
