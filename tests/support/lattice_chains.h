#pragma once
// The chains of a lattice circuit worked out on the lattice graph itself: the facts that
// decide whether nodal analysis, as the program does it, can take a circuit at all.

#include "support/lattice_circuit.h"

#include <vector>

namespace ampora::test {

struct LatticeChain {
    int start = -1; // a node (a point of three or more edges); -1 for a node-free loop
    int end = -1;
    std::vector<int> edges;
    double emf = 0;          // battery voltages gained from start to end
    int sources = 0;         // current sources on the chain
    bool batteryOnly = true; // nothing but batteries and bare wire
};

struct LatticeFacts {
    int nodes = 0;
    std::vector<LatticeChain> chains; // each chain once, node-free loops included
    int nodeFreeLoops = 0;
    bool chainWithTwoSources = false;
    // Two battery-only chains join the same two nodes with the same voltage.
    bool identicalBatteryChains = false;
    // Battery-only chains close a loop whose voltages do not add up to zero.
    bool contradictoryBatteryLoop = false;
    // The nodal equations have no single solution: a loop of batteries and bare wire alone
    // (its current is free), or without the current sources the points fall apart (a part
    // floats, or hangs on sources alone).
    bool singular = false;
};

LatticeFacts AnalyseLattice(const LatticeCircuit& lattice);

} // namespace ampora::test
