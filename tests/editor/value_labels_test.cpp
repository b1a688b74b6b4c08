#include "document/circuit_edit.h"
#include "editor/value_labels.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

TEST(ValueLabels, TheTypedTextOrTheStoredValueIsFollowedByTheUnit) {
    Element battery{kBatteryUp, 12, 0, 0, 0, 999};
    Element resistor{kResistorHorizontal, 2200, 0, 0, 0, 999};
    Element source{kSourceRight, 0.5f, 0, 0, 0, 999};
    EXPECT_EQ(ValueLabelText(battery, "012"), "012 V");
    EXPECT_EQ(ValueLabelText(resistor, ""), "2200 \u03A9");
    EXPECT_EQ(ValueLabelText(source, ""), "0.5 A");
}

std::string Where(const LabelBox& box) {
    return std::to_string(static_cast<int>(box.Left)) + "," +
           std::to_string(static_cast<int>(box.Top));
}

TEST(ValueLabels, ALabelGoesToTheFirstSideThatCoversNoWire) {
    Circuit circuit;
    AddWire(circuit, 80, 80, 240, 80);
    AddWire(circuit, 240, 80, 240, 240);
    AddElement(circuit, kResistorHorizontal, 1, 160, 80);
    AddElement(circuit, kBatteryUp, 1, 240, 160);
    EXPECT_EQ(Where(PlaceValueLabel(circuit, 1, 40, 14)), "140,47");  // above
    EXPECT_EQ(Where(PlaceValueLabel(circuit, 2, 40, 14)), "259,153"); // right
    AddWire(circuit, 270, 100, 270, 200); // a wire on the right pushes it left
    EXPECT_EQ(Where(PlaceValueLabel(circuit, 2, 40, 14)), "181,153");
    AddWire(circuit, 100, 60, 200, 60); // a wire above pushes it below
    EXPECT_EQ(Where(PlaceValueLabel(circuit, 1, 40, 14)), "140,99");
}

} // namespace
} // namespace ampora
