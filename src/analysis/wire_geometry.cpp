#include "analysis/wire_geometry.h"

#include <algorithm>

namespace ampora {

WireLine LineOf(const Wire& wire) {
    WireLine line;
    line.Horizontal = wire.X1 != wire.X2;
    if (line.Horizontal) {
        line.Level = wire.Y1;
        line.Low = std::min(wire.X1, wire.X2);
        line.High = std::max(wire.X1, wire.X2);
    } else {
        line.Level = wire.X1;
        line.Low = std::min(wire.Y1, wire.Y2);
        line.High = std::max(wire.Y1, wire.Y2);
    }
    return line;
}

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
