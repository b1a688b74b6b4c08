#include "editor/value_labels.h"

#include "document/number_text.h"

#include <algorithm>
#include <array>

namespace ampora {

std::string ValueUnit(int kind) {
    if (IsBattery(kind)) {
        return " V";
    }
    if (IsResistor(kind)) {
        return " \u03A9";
    }
    if (IsCurrentSource(kind)) {
        return " A";
    }
    return "";
}

std::string ValueLabelText(const Element& element, const std::string& typedText) {
    const std::string value = typedText.empty() ? ShortestText(element.Value) : typedText;
    return value + ValueUnit(element.Kind);
}

namespace {

bool Overlaps(const LabelBox& box, float left, float top, float right, float bottom) {
    return box.Left < right && left < box.Left + box.Width && box.Top < bottom &&
           top < box.Top + box.Height;
}

bool IsFree(const Circuit& circuit, int slot, const LabelBox& box) {
    for (int w = 1; w <= circuit.NumWires; ++w) {
        const Wire& wire = circuit.Wires[w];
        if (wire.Used == 0) {
            continue;
        }
        // Wires are painted 2 units past their ends and are a few units thick.
        const float left = std::min(wire.X1, wire.X2) - 3;
        const float right = std::max(wire.X1, wire.X2) + 3;
        const float top = std::min(wire.Y1, wire.Y2) - 3;
        const float bottom = std::max(wire.Y1, wire.Y2) + 3;
        if (Overlaps(box, left, top, right, bottom)) {
            return false;
        }
    }
    for (int e = 1; e <= circuit.NumElements; ++e) {
        const Element& other = circuit.Elements[e];
        if (e != slot && other.Kind != kEmpty &&
            Overlaps(box, other.X - 16, other.Y - 16, other.X + 16, other.Y + 16)) {
            return false;
        }
    }
    return true;
}

} // namespace

LabelBox PlaceValueLabel(const Circuit& circuit, int slot, float width, float height) {
    const Element& e = circuit.Elements[slot];
    constexpr float kGap = 3;
    std::array<LabelBox, 2> sides{};
    if (IsVerticalKind(e.Kind)) {
        sides[0] = LabelBox{e.X + 16 + kGap, e.Y - height / 2, width, height};
        sides[1] = LabelBox{e.X - 16 - kGap - width, e.Y - height / 2, width, height};
    } else {
        sides[0] = LabelBox{e.X - width / 2, e.Y - 16 - kGap - height, width, height};
        sides[1] = LabelBox{e.X - width / 2, e.Y + 16 + kGap, width, height};
    }
    for (const LabelBox& side : sides) {
        if (IsFree(circuit, slot, side)) {
            return side;
        }
    }
    return sides[0];
}

} // namespace ampora
