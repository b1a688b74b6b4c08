#pragma once
// The value label beside each device picture: its text and where it goes.

#include "document/circuit.h"

#include <string>

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
// device, right or left of a vertical one, on the first side where it covers no wire and
// no other device picture (the first side when every side is taken).
LabelBox PlaceValueLabel(const Circuit& circuit, int slot, float width, float height);

} // namespace ampora
