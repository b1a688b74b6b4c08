#pragma once
// Points and the normal form in which the topology reads a wire. Points are compared
// exactly: the editor snaps every end to the grid, so equal points are bit-equal.

#include "tables/circuit.h"

#include <algorithm>
#include <cmath>

namespace ampora {

struct Point {
    float X = 0, Y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

// Horizontal is true unless X1 = X2 (a wire of zero length counts as vertical). Level is
// the shared Y of a horizontal wire or the shared X of a vertical one; Low and High are
// the smaller and the larger of the varying coordinates.
struct WireLine {
    bool Horizontal = false;
    float Level = 0, Low = 0, High = 0;
    friend bool operator==(const WireLine&, const WireLine&) = default;
};

inline WireLine LineOf(const Wire& wire) {
    if (wire.X1 != wire.X2) {
        return WireLine{true, wire.Y1, std::min(wire.X1, wire.X2), std::max(wire.X1, wire.X2)};
    }
    return WireLine{false, wire.X1, std::min(wire.Y1, wire.Y2), std::max(wire.Y1, wire.Y2)};
}

// Writes the wire back from its normal form, the lower coordinate first.
void SetWireFromLine(Wire& wire, bool horizontal, float level, float low, float high);

inline Point FirstEnd(const Wire& wire) {
    return Point{wire.X1, wire.Y1};
}
inline Point SecondEnd(const Wire& wire) {
    return Point{wire.X2, wire.Y2};
}

inline bool IsNaNPoint(Point point) {
    return std::isnan(point.X) || std::isnan(point.Y);
}

// True when the point lies on the segment strictly between its two ends.
inline bool LiesStrictlyInside(Point point, Point from, Point to) {
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
