#pragma once
// The current of every chain and of every device, from the solved node voltages.

#include "analysis/analysis_tables.h"
#include "analysis/chain_path.h"
#include "analysis/travel.h"
#include "document/circuit.h"

#include <array>

namespace ampora {

// Where a device sits: the first chain (in slot order) with a path segment that holds its
// centre strictly between its ends, and which way that chain travels there.
struct ChainPlacement {
    int chain = 0; // 0 when the device lies on no chain
    Travel travel = Travel::None;
};
ChainPlacement FindChainOf(const Topology& topology, float x, float y);

// FindChainOf for every live device at once, by element slot (index 0 unused).
using DevicePlacements = std::array<ChainPlacement, kMaxElements + 1>;
DevicePlacements PlaceDevices(const Circuit& circuit, const Topology& topology,
                              ChainPoints& chains);

// Every chain and device current starts unknown (999, Branch 0). A device on a chain with
// a current source or a resistor then gets the chain's current, signed for the screen:
// positive when it flows up or left, with Branch = +chain, else -current and -chain. The
// chain currents follow through SetChainCurrent. Devices on chains of batteries and wire
// only stay unknown: those currents are unknowns of the equations. Returns where each
// device was placed, which holds until the chains or the devices change.
DevicePlacements ComputeCurrents(Circuit& circuit, Topology& topology);

// Stores a device's screen-signed current as the current of chain |signedChain| along its
// travel, and minus that in its twin (the same chain traced from the other end).
void SetChainCurrent(Topology& topology, int signedChain, double current);

} // namespace ampora
