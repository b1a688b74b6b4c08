#include "analysis/chain_currents.h"

#include "analysis/chain_path.h"
#include "tables/travel.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace ampora {

namespace {

// The twin of each chain (the same chain traced from its other end; 0 for none), looked
// for once per chain while the paths stay as they are.
class Twins {
  public:
    Twins(const Topology& topology, ChainPoints& chains) : topology_(topology), chains_(chains) {
        known_.fill(-1);
    }

    int Of(int chain) {
        int& twin = known_.at(static_cast<std::size_t>(chain));
        if (twin < 0) {
            twin = 0;
            const std::vector<Point>* own = nullptr; // looked up once, after the first candidate
            for (int b = 1; b <= topology_.NumBranches; ++b) {
                const std::vector<Point>& candidate = Points(b);
                if (own == nullptr) {
                    own = &Points(chain);
                }
                if (IsReversedPath(candidate, *own)) {
                    twin = b;
                    break;
                }
            }
        }
        return twin;
    }

  private:
    // Every chain is a candidate for every other's twin: its points are fetched once.
    const std::vector<Point>& Points(int chain) {
        const std::vector<Point>*& points = points_.at(static_cast<std::size_t>(chain));
        if (points == nullptr) {
            points = &chains_[chain];
        }
        return *points;
    }

    const Topology& topology_;
    ChainPoints& chains_;
    std::array<int, kMaxChains + 1> known_{};
    std::array<const std::vector<Point>*, kMaxChains + 1> points_{};
};

void SetChainCurrent(Topology& topology, Twins& twins, int signedChain, double current) {
    Branch& chain = topology.Branches[std::abs(signedChain)];
    const bool alongTravel = (current > 0 && signedChain > 0) || (current < 0 && signedChain < 0);
    chain.Current = alongTravel ? std::fabs(current) : -std::fabs(current);
    const int twin = twins.Of(std::abs(signedChain));
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
    Twins twins(topology, chains);
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
        SetChainCurrent(topology, twins, element.Branch, element.Current);
    }
    return placements;
}

void SetChainCurrent(Topology& topology, int signedChain, double current) {
    ChainPoints chains(topology);
    Twins twins(topology, chains);
    SetChainCurrent(topology, twins, signedChain, current);
}

} // namespace ampora
