#pragma once
// The rectangle that holds everything drawn of a circuit, so that its picture in the report
// shows the circuit and nothing else.

#include "editor/value_labels.h"
#include "tables/circuit.h"

#include <vector>

namespace ampora {

// Wire ends, device pictures and the given label rectangles (value labels and node labels,
// as the window lays them out), with a margin of 6 on every side. An empty circuit gives
// left = top = 9994 and right = bottom = 6.
void GetCircuitExtents(const Circuit& circuit, const std::vector<LabelBox>& labels, float& top,
                       float& bottom, float& left, float& right);

} // namespace ampora
