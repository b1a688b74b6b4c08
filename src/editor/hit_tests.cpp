#include "editor/hit_tests.h"

#include <algorithm>
#include <cmath>

namespace ampora {

SegmentDirection SegmentTest(const Circuit& circuit, float x, float y, int ignoreElement) {
    SegmentDirection direction = kNoSegment;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used == 0) {
            continue;
        }
        if (w.Y1 == w.Y2) {
            if (y == w.Y1 && std::min(w.X1, w.X2) + 20 < x && x < std::max(w.X1, w.X2) - 20) {
                direction = kHorizontalSegment;
                break;
            }
        } else if (x == w.X1 && std::min(w.Y1, w.Y2) + 20 < y && y < std::max(w.Y1, w.Y2) - 20) {
            direction = kVerticalSegment;
            break;
        }
    }
    if (direction == kNoSegment) {
        return kNoSegment;
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (slot == ignoreElement || e.Kind == kEmpty) {
            continue;
        }
        if (std::fabs(e.X - x) < 36 && std::fabs(e.Y - y) < 36) {
            return kNoSegment;
        }
    }
    return direction;
}

bool PointOnWire(const Wire& w, float x, float y, float& fraction) {
    // Measured with min/max rather than dividing, so a wire of zero length (only a file
    // can hold one) is hit at its single point and nothing divides by zero.
    if (w.X1 == w.X2 && x == w.X1 && y >= std::min(w.Y1, w.Y2) && y <= std::max(w.Y1, w.Y2)) {
        fraction = w.Y1 == w.Y2 ? 0 : (y - w.Y1) / (w.Y2 - w.Y1);
        return true;
    }
    if (w.Y1 == w.Y2 && y == w.Y1 && x >= std::min(w.X1, w.X2) && x <= std::max(w.X1, w.X2)) {
        fraction = w.X1 == w.X2 ? 0 : (x - w.X1) / (w.X2 - w.X1);
        return true;
    }
    return false;
}

int WireHit(const Circuit& circuit, float x, float y) {
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        float fraction = 0;
        if (circuit.Wires[slot].Used != 0 && PointOnWire(circuit.Wires[slot], x, y, fraction)) {
            return slot;
        }
    }
    return 0;
}

void FillElementFractions(const Circuit& circuit, EditorState& state, int wireSlot) {
    state.ElementFraction.items.fill(0);
    if (!Slots<Wire, kMaxWires>::Holds(wireSlot)) {
        return;
    }
    const Wire& wire = circuit.Wires[wireSlot];
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        float fraction = 0;
        if (e.Kind != kEmpty && PointOnWire(wire, e.X, e.Y, fraction)) {
            state.ElementFraction[slot] = fraction;
        }
    }
}

int ElementAt(const Circuit& circuit, float x, float y) {
    for (int slot = circuit.NumElements; slot >= 1; --slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind != kEmpty && x >= e.X - 16 && x < e.X + 16 && y >= e.Y - 16 && y < e.Y + 16) {
            return slot;
        }
    }
    return 0;
}

int WireEndNear(const Circuit& circuit, float x, float y, int& end) {
    const auto near = [x, y](float ex, float ey) {
        return std::fabs(ex - x) <= kStretchTolerance && std::fabs(ey - y) <= kStretchTolerance;
    };
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used == 0) {
            continue;
        }
        if (near(w.X1, w.Y1)) {
            end = 1;
            return slot;
        }
        if (near(w.X2, w.Y2)) {
            end = 2;
            return slot;
        }
    }
    end = 0;
    return 0;
}

} // namespace ampora
