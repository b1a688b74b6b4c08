#include "report/circuit_extents.h"

#include <algorithm>

namespace ampora {

namespace {

constexpr float kMargin = 6;
constexpr float kPictureHalf = 16; // device pictures are 32 by 32, centred on their point

} // namespace

void GetCircuitExtents(const Circuit& circuit, const std::vector<LabelBox>& labels, float& top,
                       float& bottom, float& left, float& right) {
    left = top = 10000;
    right = bottom = 0;
    const auto widen = [&](float x1, float y1, float x2, float y2) {
        left = std::min({left, x1, x2});
        right = std::max({right, x1, x2});
        top = std::min({top, y1, y2});
        bottom = std::max({bottom, y1, y2});
    };
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used != 0) {
            widen(w.X1, w.Y1, w.X2, w.Y2);
        }
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind != kEmpty) {
            widen(e.X - kPictureHalf, e.Y - kPictureHalf, e.X + kPictureHalf, e.Y + kPictureHalf);
        }
    }
    for (const LabelBox& label : labels) {
        widen(label.Left, label.Top, label.Left + label.Width, label.Top + label.Height);
    }
    left -= kMargin;
    top -= kMargin;
    right += kMargin;
    bottom += kMargin;
}

} // namespace ampora
