#include "tables/wire_geometry.h"

#include <algorithm>

namespace ampora {

void SetWireFromLine(Wire& wire, bool horizontal, float level, float low, float high) {
    if (horizontal) {
        wire.X1 = low;
        wire.X2 = high;
        wire.Y1 = level;
        wire.Y2 = level;
    } else {
        wire.X1 = level;
        wire.X2 = level;
        wire.Y1 = low;
        wire.Y2 = high;
    }
}

bool LiesStrictlyInside(Point point, Point from, Point to) {
    if (from.X == to.X) {
        return point.X == from.X && point.Y > std::min(from.Y, to.Y) &&
               point.Y < std::max(from.Y, to.Y);
    }
    if (from.Y == to.Y) {
        return point.Y == from.Y && point.X > std::min(from.X, to.X) &&
               point.X < std::max(from.X, to.X);
    }
    return false;
}

} // namespace ampora
