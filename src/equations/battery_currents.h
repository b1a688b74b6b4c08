#pragma once
// The currents of the batteries inside supernodes. The node voltages do not fix them, so
// each battery chain has a current variable (I1, I2, ...) found from the current law at
// every member of its supernode but the anchor.

#include "analysis/chain_currents.h"
#include "tables/prompts.h"
#include "tables/workspace.h"

namespace ampora {

// Runs after ComputeCurrents, with the device placements it returned: fills the Current of
// every battery chain and of the devices on it. When the supernode equations do not match
// the current variables in number it shows the message of EqnSet0 and leaves those
// currents unknown.
void GetSuperCurrents(Workspace& ws, Prompts& prompts, const DevicePlacements& placements);

inline constexpr const char* kEqnSet0Message =
    "Error in procedure EqnSet0.  Number of supernode equations and number of i-variables "
    "don't match.";

} // namespace ampora
