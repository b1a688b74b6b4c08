#pragma once
// Points and the normal form in which the topology reads a wire. Points are compared
// exactly: the editor snaps every end to the grid, so equal points are bit-equal.

#include "document/circuit.h"

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

WireLine LineOf(const Wire& wire);

// Writes the wire back from its normal form, the lower coordinate first.
void SetWireFromLine(Wire& wire, bool horizontal, float level, float low, float high);

inline Point FirstEnd(const Wire& wire) {
    return Point{wire.X1, wire.Y1};
}
inline Point SecondEnd(const Wire& wire) {
    return Point{wire.X2, wire.Y2};
}

// True when the point lies on the segment strictly between its two ends.
bool LiesStrictlyInside(Point point, Point from, Point to);

} // namespace ampora
