#pragma once
// Points and the normal form in which the topology reads a wire. Points are compared
// exactly: the editor snaps every end to the grid, so equal points are bit-equal.

#include "tables/circuit.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

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

// A coordinate as an unsigned number in the same order, equal exactly when the floats are
// (zero and minus zero are one). Not for NaN, which equals nothing and has no place.
inline std::uint32_t OrderedBits(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value == 0 ? 0.0f : value);
    return (bits & 0x80000000u) != 0 ? ~bits : bits | 0x80000000u;
}

// A coordinate's bits with minus zero made zero (adding zero does that and changes nothing
// else): equal exactly when the floats are, for keys that are hashed rather than sorted.
// Not for NaN.
inline std::uint32_t EqualityBits(float value) {
    return std::bit_cast<std::uint32_t>(value + 0.0f);
}

// A point as one number, equal exactly when the points are; not for NaN.
inline std::uint64_t PositionKey(Point point) {
    return std::uint64_t{EqualityBits(point.Y)} << 32 | EqualityBits(point.X);
}

inline bool HasNaN(Point point) {
    return std::isnan(point.X) || std::isnan(point.Y);
}

// Keys of a point without NaN that sort along rows (y, then x) or along columns (x, then y),
// so that the points strictly inside a horizontal or a vertical segment lie in one range.
inline std::uint64_t RowKey(Point point) {
    return std::uint64_t{OrderedBits(point.Y)} << 32 | OrderedBits(point.X);
}
inline std::uint64_t ColumnKey(Point point) {
    return std::uint64_t{OrderedBits(point.X)} << 32 | OrderedBits(point.Y);
}

// True when the point lies on the segment strictly between its two ends.
bool LiesStrictlyInside(Point point, Point from, Point to);

} // namespace ampora
