#include "analysis/chain_path.h"

#include "tables/number_text.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string_view>
#include <utility>

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

namespace {

// Zero and normal floats come back from their shortest text unchanged; others are read
// from the text itself, which then decides what happens to them.
bool ReadsBackExactly(float value) {
    return value == 0 || std::isnormal(value);
}

} // namespace

void KeepTracedPoints(Topology& topology, int chain, std::vector<Point> points) {
    TracedPath& traced = topology.Traced[chain];
    const bool exact = std::all_of(points.begin(), points.end(), [](Point p) {
        return ReadsBackExactly(p.X) && ReadsBackExactly(p.Y);
    });
    if (exact) {
        traced.Path = topology.Branches[chain].Path;
        traced.Points = std::move(points);
    } else {
        traced.Path.clear();
        traced.Points.clear();
    }
}

const std::vector<Point>& ChainPoints::operator[](int chain) {
    const std::string& path = topology_.Branches[chain].Path; // checks the slot
    const auto k = static_cast<std::size_t>(chain - 1);
    if (points_[k] == nullptr) {
        const TracedPath& traced = topology_.Traced[chain];
        if (!traced.Path.empty() && traced.Path == path) {
            points_[k] = &traced.Points;
        } else {
            read_[k] = PathPoints(path);
            points_[k] = &read_[k];
        }
    }
    return *points_[k];
}

} // namespace ampora
