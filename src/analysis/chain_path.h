#pragma once
// The Path of a traced chain: its points in trace order as "x,y;x,y;...", each
// coordinate in its shortest text, so that the text reads back to the same floats.

#include "tables/analysis_tables.h"
#include "tables/wire_geometry.h"

#include <array>
#include <string>
#include <vector>

namespace ampora {

// Room for the text of one point ("x,y"), both coordinates at their longest.
constexpr std::size_t kPathPointTextSize = 64;
// Writes the text of one point into `out`, which holds kPathPointTextSize characters;
// returns its end.
char* WritePathPoint(char* out, Point point);
void AppendPathPoint(std::string& path, Point point);

// The points of a path. Throws std::invalid_argument on text that is not a path.
std::vector<Point> PathPoints(const std::string& path);

// True when `path` holds the points of `other` in reverse order: the same chain traced
// from its other end.
bool IsReversedPath(const std::string& path, const std::string& other);
bool IsReversedPath(const std::vector<Point>& points, const std::vector<Point>& other);

// The points of each chain slot, read from its Path when first asked for (throwing as
// PathPoints does). Holds a reference to the topology, whose paths must not change meanwhile.
class ChainPoints {
  public:
    explicit ChainPoints(const Topology& topology) : topology_(topology) {}
    const std::vector<Point>& operator[](int chain);

  private:
    const Topology& topology_;
    std::array<bool, kMaxChains> read_{};
    std::array<std::vector<Point>, kMaxChains> points_;
};

} // namespace ampora
