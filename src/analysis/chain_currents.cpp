#include "analysis/chain_currents.h"

#include "analysis/chain_path.h"
#include "tables/travel.h"

#include <cmath>
#include <cstdlib>
#include <vector>

namespace ampora {

namespace {

// The twin of a chain: the first node-to-node chain whose path is its path read backwards,
// the same chain traced from its other end; 0 for none.
int TwinOf(const Topology& topology, ChainPoints& chains, int chain) {
    for (int b = 1; b <= topology.NumBranches; ++b) {
        const std::vector<Point>& candidate = chains[b]; // read before the chain's own
        if (IsReversedPath(candidate, chains[chain])) {
            return b;
        }
    }
    return 0;
}

void SetChainCurrent(Topology& topology, ChainPoints& chains, int signedChain, double current) {
    Branch& chain = topology.Branches[std::abs(signedChain)];
    const bool alongTravel = (current > 0 && signedChain > 0) || (current < 0 && signedChain < 0);
    chain.Current = alongTravel ? std::fabs(current) : -std::fabs(current);
    const int twin = TwinOf(topology, chains, std::abs(signedChain));
    if (twin != 0) {
        topology.Branches[twin].Current = -chain.Current;
    }
}

} // namespace

DevicePlacements ComputeCurrents(Circuit& circuit, Topology& topology) {
    for (int b = 1; b <= topology.NumBranches; ++b) {
        topology.Branches[b].Current = kUnknownCurrent;
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        circuit.Elements[slot].Current = kUnknownCurrent;
        circuit.Elements[slot].Branch = 0;
    }
    ChainPoints chains(topology);
    const DevicePlacements& placements = topology.Placements;
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        Element& element = circuit.Elements[slot];
        if (element.Kind == kEmpty) {
            continue;
        }
        const ChainPlacement placement = placements.at(static_cast<std::size_t>(slot));
        if (placement.chain == 0) {
            continue;
        }
        const Branch& chain = topology.Branches[placement.chain];
        double current = 0;
        if (chain.SourceCurrent != 0) {
            current = chain.SourceCurrent;
        } else if (chain.Resistance != 0) {
            current =
                (static_cast<double>(chain.EMF) + circuit.NodeLabels[chain.StartNode].Voltage -
                 circuit.NodeLabels[chain.EndNode].Voltage) /
                static_cast<double>(chain.Resistance);
        } else {
            continue;
        }
        const int sign = TravelIsScreenPositive(placement.travel) ? 1 : -1;
        element.Current = sign * current;
        element.Branch = static_cast<std::int16_t>(sign * placement.chain);
        SetChainCurrent(topology, chains, element.Branch, element.Current);
    }
    return placements;
}

void SetChainCurrent(Topology& topology, int signedChain, double current) {
    ChainPoints chains(topology);
    SetChainCurrent(topology, chains, signedChain, current);
}

} // namespace ampora
