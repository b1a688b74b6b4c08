#include "analysis/node_finding.h"

#include "analysis/wire_geometry.h"

#include <algorithm>
#include <array>
#include <string>

namespace ampora {

namespace {

struct PreviousNode {
    Point at;
    std::string Name;
};

Point EndOf(const Circuit& circuit, int end) {
    const Wire& wire = circuit.Wires[(end + 1) / 2];
    return end % 2 == 1 ? FirstEnd(wire) : SecondEnd(wire);
}

int NodeAt(const Circuit& circuit, Point point) {
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& node = circuit.NodeLabels[slot];
        if (node.X == point.X && node.Y == point.Y) {
            return slot;
        }
    }
    return 0;
}

void AddNode(Circuit& circuit, Point point, int ends) {
    NodeLabel node;
    node.X = point.X;
    node.Y = point.Y;
    node.Name = kUnnamedNode;
    std::array<std::int16_t*, 4> wires{&node.Wire1, &node.Wire2, &node.Wire3, &node.Wire4};
    int count = 0;
    for (int end = 1; end <= ends; ++end) {
        if (EndOf(circuit, end) == point) {
            if (count == 4) {
                throw SlotOutOfRange("more than four wire ends meet at one point");
            }
            *wires[static_cast<std::size_t>(count++)] = static_cast<std::int16_t>((end + 1) / 2);
        }
    }
    const int slot = circuit.NumNodes + 1;
    circuit.NodeLabels[slot] = node; // throws past 20 nodes
    circuit.NumNodes = static_cast<std::int16_t>(slot);
}

void FindNodesInPlace(Circuit& circuit, Topology& topology) {
    std::array<PreviousNode, kMaxNodes> previous;
    const int numPrevious = std::min<int>(circuit.NumNodes, kMaxNodes);
    for (int slot = 1; slot <= numPrevious; ++slot) {
        const NodeLabel& node = circuit.NodeLabels[slot];
        previous[static_cast<std::size_t>(slot - 1)] = {Point{node.X, node.Y}, node.Name};
    }
    circuit.NumNodes = 0;
    topology.NumLooseEnds = 0;

    const int ends = 2 * circuit.NumWires;
    for (int end = 1; end <= ends; ++end) {
        const Point point = EndOf(circuit, end);
        int multiplicity = 0;
        for (int other = 1; other <= ends; ++other) {
            if (EndOf(circuit, other) == point) {
                ++multiplicity;
            }
        }
        if (multiplicity == 1) {
            const int slot = topology.NumLooseEnds + 1;
            topology.LooseEnds[slot] = LooseEnd{point.X, point.Y}; // throws past 20
            topology.NumLooseEnds = static_cast<std::int16_t>(slot);
        } else if (multiplicity >= 3 && NodeAt(circuit, point) == 0) {
            AddNode(circuit, point, ends);
        }
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
}

} // namespace

void FindNodes(Circuit& circuit, Topology& topology) {
    // A circuit refused half-way keeps the node names it had, for the next attempt.
    const auto labels = circuit.NodeLabels;
    const std::int16_t numNodes = circuit.NumNodes;
    try {
        FindNodesInPlace(circuit, topology);
    } catch (...) {
        circuit.NodeLabels = labels;
        circuit.NumNodes = numNodes;
        throw;
    }
}

} // namespace ampora
