#include "analysis/chain_path.h"

#include "tables/number_text.h"

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

char* WritePathPoint(char* out, Point point) {
    char* at = WriteShortestText(out, out + 32, point.X);
    *at++ = ',';
    return WriteShortestText(at, out + kPathPointTextSize, point.Y);
}

void AppendPathPoint(std::string& path, Point point) {
    // The shortest texts of both coordinates, written straight into the path.
    char buffer[kPathPointTextSize + 1];
    char* at = buffer;
    if (!path.empty()) {
        *at++ = ';';
    }
    path.append(buffer, WritePathPoint(at, point));
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

bool IsReversedPath(const std::vector<Point>& points, const std::vector<Point>& other) {
    return points.size() == other.size() &&
           std::equal(points.begin(), points.end(), other.rbegin());
}

bool IsReversedPath(const std::string& path, const std::string& other) {
    return IsReversedPath(PathPoints(path), PathPoints(other));
}

const std::vector<Point>& ChainPoints::operator[](int chain) {
    const std::string& path = topology_.Branches[chain].Path; // checks the slot
    const auto k = static_cast<std::size_t>(chain - 1);
    if (!read_[k]) {
        points_[k] = PathPoints(path);
        read_[k] = true;
    }
    return points_[k];
}

} // namespace ampora
