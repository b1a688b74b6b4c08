#pragma once
// The wire ends looked up by the point they lie at, for node finding and tracing.

#include "tables/circuit.h"
#include "tables/wire_geometry.h"

#include <span>
#include <vector>

namespace ampora {

// Orders points by x, then y, comparing the floats exactly, so that zero and minus zero are
// one point. Not for points holding NaN, which equal no point.
struct PointOrder {
    bool operator()(Point a, Point b) const { return a.X < b.X || (a.X == b.X && a.Y < b.Y); }
};

// A wire end by number: 2 (slot - 1) for the first end of the wire in `slot`, the next
// number for its second end, and the point it lies at.
struct WireEnd {
    Point at;
    int end = 0;
};

inline int SlotOfEnd(int end) {
    return end / 2 + 1;
}

// The wire ends of slots 1..NumWires sorted by the point they lie at (PointOrder), the ends
// at one point in end order, so that the ends at a point are found by a binary search. Ends
// holding NaN lie at no point and are left out. Throws for a count past the table.
class EndsByPoint {
  public:
    explicit EndsByPoint(const Circuit& circuit);
    // The ends at the point, in end order; none for a point holding NaN.
    std::span<const WireEnd> At(Point point) const;

  private:
    std::vector<WireEnd> sorted_;
};

} // namespace ampora
