#include "analysis/branch_sums.h"

#include "analysis/chain_path.h"
#include "analysis/device_index.h"
#include "tables/analysis_failure.h"
#include "tables/travel.h"

#include <string>

namespace ampora {

namespace {

void AddDevice(const Element& element, Travel travel, Branch& chain) {
    const bool agrees = AgreesWithTravel(element.Kind, travel);
    if (IsResistor(element.Kind)) {
        chain.Resistance += element.Value;
    } else if (IsBattery(element.Kind)) {
        chain.EMF += agrees ? element.Value : -element.Value;
    } else if (IsCurrentSource(element.Kind)) {
        if (chain.SourceCurrent != 0) {
            throw AnalysisFailure::TwoCurrentSources;
        }
        chain.SourceCurrent = agrees ? element.Value : -element.Value;
    }
}

// Adds up the devices on chain `b`, placing each device not yet placed on an earlier chain.
void SumChain(const Circuit& circuit, const DeviceIndex& devices, const std::vector<Point>& points,
              int b, Topology& topology) {
    Branch& chain = topology.Branches[b];
    chain.Resistance = 0;
    chain.EMF = 0;
    chain.SourceCurrent = 0;
    for (std::size_t k = 1; k < points.size(); ++k) {
        const Point from = points[k - 1];
        const Point to = points[k];
        const Travel travel = TravelAlong(from, to);
        devices.ForEachInside(from, to, [&](int slot) {
            AddDevice(circuit.Elements[slot], travel, chain);
            ChainPlacement& placement = topology.Placements.at(static_cast<std::size_t>(slot));
            if (placement.chain == 0) {
                placement.chain = b;
                placement.travel = travel;
            }
            ++placement.counted;
        });
    }
}

} // namespace

void SumBranches(const Circuit& circuit, Topology& topology) {
    topology.NumCurrents = 0;
    topology.Placements = {};
    ChainPoints points(topology);
    const DeviceIndex devices(circuit);
    for (int b = 1; b <= topology.NumBranches; ++b) {
        SumChain(circuit, devices, points[b], b, topology);
        Branch& chain = topology.Branches[b];
        chain.CurrentName.clear();
        if (chain.Resistance != 0 || chain.SourceCurrent != 0) {
            continue;
        }
        // A chain of batteries and wire only: its current is an unknown, named once and
        // shared with its twin, the same chain traced from the other end.
        for (int earlier = 1; earlier < b; ++earlier) {
            const Branch& twin = topology.Branches[earlier];
            if (IsReversedPath(points[earlier], points[b])) {
                chain.CurrentName = "-" + twin.CurrentName;
                break;
            }
        }
        if (chain.CurrentName.empty()) {
            ++topology.NumCurrents;
            chain.CurrentName = "I" + std::to_string(topology.NumCurrents);
        }
    }
}

} // namespace ampora
