#pragma once
// Devices drawn where the analysis reads them differently from how they look: centred where
// wires meet (so part of no branch), where two wires cross (so part of both), off every
// wire, or a current source of no current (which the branch sums cannot tell from a wire).
// The analysis goes on as it always does; these texts tell the student what it made of them.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"

#include <string>
#include <vector>

namespace ampora {

inline constexpr const char* kWhereWiresMeet =
    "lies where wires meet, so it belongs to no branch and is treated as wire";
inline constexpr const char* kWhereWiresCross = "lies where two wires cross and is counted in both";
inline constexpr const char* kOnNoWire = "lies on no wire, so it is left out of the analysis";
inline constexpr const char* kZeroCurrentSource =
    "a current source of 0 A is analysed as a plain wire; give it a value or erase it";

// One warning per device that needs one, in slot order. Reads where the branch sums placed
// each device (Topology::Placements), so it runs after them.
std::vector<DrawingWarning> FindDrawingWarnings(const Circuit& circuit, const Topology& topology);

// "the resistor of 10 ohms at (160, 40)": the device's kind, value and centre.
std::string DescribeDevice(const Element& element);

} // namespace ampora
