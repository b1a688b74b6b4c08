#include "analysis/wire_ends.h"

#include <algorithm>

namespace ampora {

EndsByPoint::EndsByPoint(const Circuit& circuit) {
    sorted_.reserve(2 * static_cast<std::size_t>(std::max<int>(circuit.NumWires, 0)));
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& wire = circuit.Wires[slot];
        for (const WireEnd end : {WireEnd{FirstEnd(wire), 2 * (slot - 1)},
                                  WireEnd{SecondEnd(wire), 2 * (slot - 1) + 1}}) {
            if (!IsNaNPoint(end.at)) {
                sorted_.push_back(end);
            }
        }
    }
    std::sort(sorted_.begin(), sorted_.end(), [](const WireEnd& a, const WireEnd& b) {
        return PointOrder{}(a.at, b.at) || (a.at == b.at && a.end < b.end);
    });
}

std::span<const WireEnd> EndsByPoint::At(Point point) const {
    if (IsNaNPoint(point)) {
        return {};
    }
    struct ByPoint {
        bool operator()(const WireEnd& a, Point b) const { return PointOrder{}(a.at, b); }
        bool operator()(Point a, const WireEnd& b) const { return PointOrder{}(a, b.at); }
    };
    const auto [first, last] = std::equal_range(sorted_.begin(), sorted_.end(), point, ByPoint{});
    return {first, last};
}

} // namespace ampora
