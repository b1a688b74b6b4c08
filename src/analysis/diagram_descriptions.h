#pragma once
// The circuit diagram in words, one sentence for each wire, device and node, for those who
// hear the screen instead of seeing it: "Resistor, 100 Ω, from V1 to 0; current 0.12 A
// downward" once the circuit is solved.

#include "tables/workspace.h"

#include <string>

namespace ampora {

// "Wire from (64, 64) to (160, 64), carrying the resistor 100 Ω".
// `valueTexts` holds each device's label as drawn, by element slot.
std::string DescribeWire(const Circuit& circuit, int slot,
                         const std::vector<std::string>& valueTexts);

// Step 1: "Resistor, 100 Ω, horizontal, at (96, 64)"; step 2 names the nodes it lies
// between; step 3 which way its current flows and how much: "Battery, 12 V, from 0 to V1;
// current 0.5 A upward". `valueText` is its label as drawn in step 1.
std::string DescribeDevice(const Workspace& ws, int slot, const std::string& valueText,
                           int sigFigs);

// "Node V1, joining 3 wires" in step 2; "Node V1, 6 V" in step 3.
std::string DescribeNode(const Workspace& ws, int slot, int sigFigs);

} // namespace ampora
