#include "editor/value_labels.h"

#include "tables/number_text.h"

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

bool BoxesOverlap(const LabelBox& a, const LabelBox& b) {
    return a.Left < b.Left + b.Width && b.Left < a.Left + a.Width && a.Top < b.Top + b.Height &&
           b.Top < a.Top + a.Height;
}

bool BoxIsFree(const Circuit& circuit, int ownSlot, const LabelBox& box,
               const std::vector<LabelBox>& taken) {
    for (int w = 1; w <= circuit.NumWires; ++w) {
        const Wire& wire = circuit.Wires[w];
        if (wire.Used == 0) {
            continue;
        }
        // Wires are painted 2 units past their ends and are a few units thick.
        const float left = std::min(wire.X1, wire.X2) - 3;
        const float top = std::min(wire.Y1, wire.Y2) - 3;
        const LabelBox band{left, top, std::max(wire.X1, wire.X2) + 3 - left,
                            std::max(wire.Y1, wire.Y2) + 3 - top};
        if (BoxesOverlap(box, band)) {
            return false;
        }
    }
    for (int e = 1; e <= circuit.NumElements; ++e) {
        const Element& other = circuit.Elements[e];
        if (e != ownSlot && other.Kind != kEmpty &&
            BoxesOverlap(box, LabelBox{other.X - 16, other.Y - 16, 32, 32})) {
            return false;
        }
    }
    return std::none_of(taken.begin(), taken.end(),
                        [&box](const LabelBox& other) { return BoxesOverlap(box, other); });
}

LabelBox PlaceValueLabel(const Circuit& circuit, int slot, float width, float height,
                         const std::vector<LabelBox>& taken) {
    const Element& e = circuit.Elements[slot];
    constexpr float kGap = 3;
    std::array<LabelBox, 6> places{};
    if (IsVerticalKind(e.Kind)) {
        const float right = e.X + 16 + kGap;
        const float left = e.X - 16 - kGap - width;
        places = {LabelBox{right, e.Y - height / 2, width, height},
                  LabelBox{left, e.Y - height / 2, width, height},
                  LabelBox{right, e.Y - 16, width, height},
                  LabelBox{right, e.Y + 16 - height, width, height},
                  LabelBox{left, e.Y - 16, width, height},
                  LabelBox{left, e.Y + 16 - height, width, height}};
    } else {
        const float above = e.Y - 16 - kGap - height;
        const float below = e.Y + 16 + kGap;
        places = {LabelBox{e.X - width / 2, above, width, height},
                  LabelBox{e.X - width / 2, below, width, height},
                  LabelBox{e.X - 16, above, width, height},
                  LabelBox{e.X + 16 - width, above, width, height},
                  LabelBox{e.X - 16, below, width, height},
                  LabelBox{e.X + 16 - width, below, width, height}};
    }
    for (const LabelBox& place : places) {
        if (BoxIsFree(circuit, slot, place, taken)) {
            return place;
        }
    }
    return places[0];
}

} // namespace ampora
