#include "support/lattice_chains.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace ampora::test {

namespace {

bool SameVoltage(double a, double b) {
    return std::fabs(a - b) <= 1e-6 * std::max({std::fabs(a), std::fabs(b), 1e-9});
}

// Walks from `point` along edge `first` through points of two edges until a node or the
// start is reached, marking the edges walked.
LatticeChain Walk(const LatticeCircuit& lattice, int point, int first, std::vector<bool>& walked,
                  const std::vector<int>& degree) {
    LatticeChain chain;
    chain.start = degree[static_cast<std::size_t>(point)] >= 3 ? point : -1;
    const int origin = point;
    int edgeIndex = first;
    while (true) {
        const LatticeEdge& edge = lattice.edges[static_cast<std::size_t>(edgeIndex)];
        walked[static_cast<std::size_t>(edgeIndex)] = true;
        chain.edges.push_back(edgeIndex);
        const bool forward = edge.from == point;
        if (edge.device == LatticeDevice::Battery) {
            chain.emf += (edge.forward == forward) ? edge.value : -edge.value;
        }
        chain.sources += edge.device == LatticeDevice::CurrentSource;
        chain.batteryOnly = chain.batteryOnly && (edge.device == LatticeDevice::None ||
                                                  edge.device == LatticeDevice::Battery);
        point = forward ? edge.to : edge.from;
        if (degree[static_cast<std::size_t>(point)] >= 3 || point == origin) {
            break;
        }
        int next = -1;
        for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
            const auto& other = lattice.edges[e];
            if (!walked[e] && (other.from == point || other.to == point)) {
                next = static_cast<int>(e);
            }
        }
        if (next < 0) {
            break;
        }
        edgeIndex = next;
    }
    chain.end = chain.start < 0 ? -1 : point;
    return chain;
}

} // namespace

LatticeFacts AnalyseLattice(const LatticeCircuit& lattice) {
    LatticeFacts facts;
    const int points = lattice.columns * lattice.rows;
    std::vector<int> degree(static_cast<std::size_t>(points));
    for (int p = 0; p < points; ++p) {
        degree[static_cast<std::size_t>(p)] = Degree(lattice, p);
        facts.nodes += degree[static_cast<std::size_t>(p)] >= 3;
    }
    std::vector<bool> walked(lattice.edges.size());
    for (int p = 0; p < points; ++p) {
        if (degree[static_cast<std::size_t>(p)] < 3) {
            continue;
        }
        for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
            const auto& edge = lattice.edges[e];
            if (!walked[e] && (edge.from == p || edge.to == p)) {
                facts.chains.push_back(Walk(lattice, p, static_cast<int>(e), walked, degree));
            }
        }
    }
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        if (!walked[e]) {
            facts.chains.push_back(
                Walk(lattice, lattice.edges[e].from, static_cast<int>(e), walked, degree));
            ++facts.nodeFreeLoops;
        }
    }

    // Battery-only chains fix the voltage between their ends; give every node reached that
    // way a voltage above the first node of its group and look for loops among them.
    std::map<int, double> offset;
    for (const LatticeChain& chain : facts.chains) {
        facts.chainWithTwoSources = facts.chainWithTwoSources || chain.sources >= 2;
        if (chain.start < 0 || !chain.batteryOnly) {
            continue;
        }
        for (const LatticeChain& other : facts.chains) {
            if (&other != &chain && other.start >= 0 && other.batteryOnly &&
                std::minmax(other.start, other.end) == std::minmax(chain.start, chain.end) &&
                SameVoltage(other.start == chain.start ? other.emf : -other.emf, chain.emf)) {
                facts.identicalBatteryChains = true;
            }
        }
    }
    for (const LatticeChain& seed : facts.chains) {
        if (seed.start < 0 || !seed.batteryOnly || offset.count(seed.start)) {
            continue;
        }
        offset[seed.start] = 0;
        std::vector<int> reached{seed.start};
        while (!reached.empty()) {
            const int node = reached.back();
            reached.pop_back();
            for (const LatticeChain& chain : facts.chains) {
                if (chain.start < 0 || !chain.batteryOnly) {
                    continue;
                }
                const bool outward = chain.start == node;
                const int other = outward ? chain.end : chain.start;
                if ((outward || chain.end == node) && !offset.count(other)) {
                    offset[other] = offset[node] + (outward ? chain.emf : -chain.emf);
                    reached.push_back(other);
                }
            }
        }
    }
    for (const LatticeChain& chain : facts.chains) {
        if (chain.start >= 0 && chain.batteryOnly &&
            !SameVoltage(offset[chain.end] - offset[chain.start], chain.emf)) {
            facts.contradictoryBatteryLoop = true;
        }
    }
    std::vector<int> group(static_cast<std::size_t>(points));
    std::iota(group.begin(), group.end(), 0);
    const auto root = [&](int p) {
        while (group[static_cast<std::size_t>(p)] != p) {
            p = group[static_cast<std::size_t>(p)];
        }
        return p;
    };
    for (const LatticeDevice joining : {LatticeDevice::Battery, LatticeDevice::Resistor}) {
        for (const LatticeEdge& edge : lattice.edges) {
            const bool batteryOrWire =
                edge.device == LatticeDevice::Battery || edge.device == LatticeDevice::None;
            if ((joining == LatticeDevice::Battery) != batteryOrWire ||
                edge.device == LatticeDevice::CurrentSource) {
                continue;
            }
            const int a = root(edge.from), b = root(edge.to);
            facts.singular = facts.singular || (a == b && batteryOrWire);
            group[static_cast<std::size_t>(a)] = b;
        }
    }
    for (int p = 0; p < points; ++p) {
        facts.singular = facts.singular || (degree[static_cast<std::size_t>(p)] > 0 &&
                                            root(p) != root(lattice.edges.front().from));
    }
    return facts;
}

} // namespace ampora::test
