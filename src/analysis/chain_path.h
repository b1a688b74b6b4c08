#pragma once
// The Path of a traced chain: its points in trace order as "x,y;x,y;...", each
// coordinate in its shortest text, so that the text reads back to the same floats.

#include "analysis/wire_geometry.h"

#include <string>
#include <vector>

namespace ampora {

void AppendPathPoint(std::string& path, Point point);

// The points of a path. Throws std::invalid_argument on text that is not a path.
std::vector<Point> PathPoints(const std::string& path);

// True when `path` holds the points of `other` in reverse order: the same chain traced
// from its other end.
bool IsReversedPath(const std::string& path, const std::string& other);

} // namespace ampora
