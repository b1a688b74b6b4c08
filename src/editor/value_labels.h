#pragma once
// The value label beside each device picture: its text and where it goes.

#include "tables/circuit.h"

#include <string>
#include <vector>

namespace ampora {

// " V" for a battery, " Ω" for a resistor, " A" for a current source.
std::string ValueUnit(int kind);

// The label of a device: the value as the user typed it (or, for a device read from a
// file, the stored value) followed by its unit.
std::string ValueLabelText(const Element& element, const std::string& typedText);

struct LabelBox {
    float Left = 0, Top = 0, Width = 0, Height = 0;
};

// Where a label of the given size goes beside device `slot`: above or below a horizontal
// device, right or left of a vertical one, on the first side where it covers no wire, no
// other device picture and none of the `taken` boxes. A label too long for the middle of a
// side slides along it to either end of the picture; the first side is used when every
// place is taken.
LabelBox PlaceValueLabel(const Circuit& circuit, int slot, float width, float height,
                         const std::vector<LabelBox>& taken = {});

// Whether two boxes share any area.
bool BoxesOverlap(const LabelBox& a, const LabelBox& b);

// Whether the box covers no live wire (as painted, a few units thick), no device picture
// other than `ownSlot`'s and none of the `taken` boxes.
bool BoxIsFree(const Circuit& circuit, int ownSlot, const LabelBox& box,
               const std::vector<LabelBox>& taken);

} // namespace ampora
