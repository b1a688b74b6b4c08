#include "analysis/node_finding.h"

#include "analysis/wire_geometry.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace ampora {

namespace {

struct PreviousNode {
    Point at;
    std::string Name;
};

// The wire ends in end order: end e is the first end of slot (e + 1) / 2 when e is odd,
// its second end when even. Throws for a wire count past the table.
std::vector<Point> WireEnds(const Circuit& circuit) {
    std::vector<Point> ends;
    ends.reserve(2 * static_cast<std::size_t>(circuit.NumWires));
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        ends.push_back(FirstEnd(circuit.Wires[slot]));
        ends.push_back(SecondEnd(circuit.Wires[slot]));
    }
    return ends;
}

void AddNode(Circuit& circuit, const std::vector<Point>& ends, Point point) {
    NodeLabel node;
    node.X = point.X;
    node.Y = point.Y;
    node.Name = kUnnamedNode;
    std::array<std::int16_t*, 4> wires{&node.Wire1, &node.Wire2, &node.Wire3, &node.Wire4};
    std::size_t count = 0;
    for (std::size_t k = 0; k < ends.size(); ++k) {
        if (ends[k] == point) {
            if (count == wires.size()) {
                throw SlotOutOfRange("more than four wire ends meet at one point");
            }
            *wires[count++] = static_cast<std::int16_t>(k / 2 + 1);
        }
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
    const std::vector<Point> ends = WireEnds(circuit);
    for (std::size_t end = 0; end < ends.size(); ++end) {
        // How many ends lie at this end's point, and whether it is the first of them.
        const Point point = ends[end];
        const auto multiplicity = std::count(ends.begin(), ends.end(), point);
        if (multiplicity == 1) {
            if (++found.looseEnds <= kMaxLooseEnds) {
                const int slot = topology.NumLooseEnds + 1;
                topology.LooseEnds[slot] = LooseEnd{point.X, point.Y};
                topology.NumLooseEnds = static_cast<std::int16_t>(slot);
            }
        } else if (multiplicity >= 3 &&
                   std::find(ends.begin(), ends.end(), point) == ends.begin() + end) {
            if (++found.nodes <= kMaxNodes) {
                AddNode(circuit, ends, point);
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
