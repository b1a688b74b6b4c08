#pragma once
// The current of every chain and of every device, from the solved node voltages.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"

namespace ampora {

// Every chain and device current starts unknown (999, Branch 0). A device on a chain with
// a current source or a resistor then gets the chain's current, signed for the screen:
// positive when it flows up or left, with Branch = +chain, else -current and -chain. The
// chain currents follow through SetChainCurrent. Devices on chains of batteries and wire
// only stay unknown: those currents are unknowns of the equations. The devices lie where
// the chains' sums placed them (Topology::Placements), which it returns.
DevicePlacements ComputeCurrents(Circuit& circuit, Topology& topology);

// Stores a device's screen-signed current as the current of chain |signedChain| along its
// travel, and minus that in its twin (the same chain traced from the other end).
void SetChainCurrent(Topology& topology, int signedChain, double current);

} // namespace ampora
