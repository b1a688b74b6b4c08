#pragma once
// A chain of the circuit in the words of a hint: "the 30 Ω resistor between V4 and 0".

#include "tables/workspace.h"

#include <string>

namespace ampora {

std::string NodeName(const Workspace& ws, int slot);

// "the 30 Ω resistor between V4 and 0", "the 10 Ω and 20 Ω resistors between V1 and V2", or
// "the 2 A current source between V1 and V4": the chain's devices that set its current,
// from its start node to its end node.
std::string ChainText(const Workspace& ws, int chain);

// "the 5 V battery", "the 5 V and 2 V batteries": those on the chain.
std::string BatteryText(const Workspace& ws, int chain);

} // namespace ampora
