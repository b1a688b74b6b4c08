#include "analysis/node_finding.h"

#include "analysis/wire_ends.h"
#include "tables/wire_geometry.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace ampora {

namespace {

struct PreviousNode {
    Point at;
    std::string Name;
};

void AddNode(Circuit& circuit, Point point, std::span<const WireEnd> ends) {
    if (ends.size() > 4) {
        throw SlotOutOfRange("more than four wire ends meet at one point");
    }
    NodeLabel node;
    node.X = point.X;
    node.Y = point.Y;
    node.Name = kUnnamedNode;
    std::array<std::int16_t*, 4> wires{&node.Wire1, &node.Wire2, &node.Wire3, &node.Wire4};
    for (std::size_t k = 0; k < ends.size(); ++k) {
        *wires[k] = static_cast<std::int16_t>(SlotOfEnd(ends[k].end));
    }
    const int slot = circuit.NumNodes + 1;
    circuit.NodeLabels[slot] = node; // throws past 20 nodes
    circuit.NumNodes = static_cast<std::int16_t>(slot);
}

FoundPoints FindNodesInPlace(Circuit& circuit, Topology& topology) {
    std::array<PreviousNode, kMaxNodes> previous;
    const int numPrevious = std::min<int>(circuit.NumNodes, kMaxNodes);
    for (int slot = 1; slot <= numPrevious; ++slot) {
        const NodeLabel& node = circuit.NodeLabels[slot];
        previous[static_cast<std::size_t>(slot - 1)] = {Point{node.X, node.Y}, node.Name};
    }
    circuit.NumNodes = 0;
    topology.NumLooseEnds = 0;
    FoundPoints found;
    const EndsByPoint ends(circuit);
    for (int end = 0; end < 2 * circuit.NumWires; ++end) {
        const Wire& wire = circuit.Wires[SlotOfEnd(end)];
        const Point point = end % 2 == 0 ? FirstEnd(wire) : SecondEnd(wire);
        // The ends at this end's point, itself included; a point holding NaN has none.
        const std::span<const WireEnd> company = ends.At(point);
        const std::size_t multiplicity = company.size();
        if (multiplicity == 1) {
            if (++found.looseEnds <= kMaxLooseEnds) {
                const int slot = topology.NumLooseEnds + 1;
                topology.LooseEnds[slot] = LooseEnd{point.X, point.Y};
                topology.NumLooseEnds = static_cast<std::int16_t>(slot);
            }
        } else if (multiplicity >= 3 && company.front().end == end) {
            if (++found.nodes <= kMaxNodes) {
                AddNode(circuit, point, company);
            }
        }
    }
    if (found.nodes > kMaxNodes) {
        return found;
    }

    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        NodeLabel& node = circuit.NodeLabels[slot];
        for (int k = 0; k < numPrevious; ++k) {
            const PreviousNode& old = previous[static_cast<std::size_t>(k)];
            if (old.at == Point{node.X, node.Y}) {
                node.Name = old.Name;
                break;
            }
        }
    }
    return found;
}

} // namespace

FoundPoints FindNodes(Circuit& circuit, Topology& topology) {
    // A circuit refused half-way keeps the node names it had, for the next attempt.
    const auto labels = circuit.NodeLabels;
    const std::int16_t numNodes = circuit.NumNodes;
    FoundPoints found;
    try {
        found = FindNodesInPlace(circuit, topology);
    } catch (...) {
        circuit.NodeLabels = labels;
        circuit.NumNodes = numNodes;
        throw;
    }
    if (found.nodes > kMaxNodes) {
        circuit.NodeLabels = labels;
        circuit.NumNodes = numNodes;
    }
    return found;
}

} // namespace ampora
