#include "analysis/node_finding.h"

#include "analysis/key_numbering.h"
#include "tables/wire_geometry.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
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

// The wire ends grouped by position, so that each end's company is found at once instead of
// by comparing it with every other end. End e is the first end of slot (e + 1) / 2 when e
// is odd, its second end when even.
class EndsByPosition {
  public:
    explicit EndsByPosition(const Circuit& circuit) : count_(2 * circuit.NumWires) {
        KeyNumbering<std::uint64_t, std::bit_ceil(std::size_t{4 * kMaxWires})> positions;
        for (int end = 1; end <= count_; ++end) {
            const Point point = EndOf(circuit, end);
            points_[Index(end)] = point;
            if (HasNaN(point)) {
                continue;
            }
            const int position = positions.Number(PositionKey(point));
            positionOf_[Index(end)] = static_cast<std::uint16_t>(position);
            Company& company = companies_[Index(position)];
            if (company.size++ == 0) {
                company.first = static_cast<std::uint16_t>(end);
            } else {
                nextAtPoint_[Index(company.last)] = static_cast<std::uint16_t>(end);
            }
            company.last = static_cast<std::uint16_t>(end);
        }
    }

    int Count() const { return count_; }
    Point PointOf(int end) const { return points_[Index(end)]; }

    // The ends at the point of `end`, itself included; none when the point holds NaN and
    // so equals no point at all.
    int Multiplicity(int end) const { return CompanyOf(end).size; }
    // True for the first end, in end order, of those at its point.
    bool FirstAtItsPoint(int end) const {
        const Company& company = CompanyOf(end);
        return company.size != 0 && company.first == end;
    }
    // Calls f for each end at the point of `end`, in end order.
    template <typename F> void ForEachAtPointOf(int end, F f) const {
        for (int other = CompanyOf(end).first; other != 0; other = nextAtPoint_[Index(other)]) {
            f(other);
        }
    }

  private:
    // The ends at one point: how many, the first and the last, in end order.
    struct Company {
        int size = 0;
        std::uint16_t first = 0, last = 0;
    };
    static std::size_t Index(int number) { return static_cast<std::size_t>(number); }
    const Company& CompanyOf(int end) const { return companies_[positionOf_[Index(end)]]; }

    int count_;
    std::array<Point, 2 * kMaxWires + 1> points_{};
    std::array<std::uint16_t, 2 * kMaxWires + 1> positionOf_{}; // 0 for a point with NaN
    std::array<std::uint16_t, 2 * kMaxWires + 1> nextAtPoint_{};
    std::array<Company, 2 * kMaxWires + 1> companies_{}; // by position number; 0 is empty
};

void AddNode(Circuit& circuit, const EndsByPosition& ends, int end) {
    const Point point = ends.PointOf(end);
    NodeLabel node;
    node.X = point.X;
    node.Y = point.Y;
    node.Name = kUnnamedNode;
    std::array<std::int16_t*, 4> wires{&node.Wire1, &node.Wire2, &node.Wire3, &node.Wire4};
    int count = 0;
    ends.ForEachAtPointOf(end, [&](int other) {
        if (count == 4) {
            throw SlotOutOfRange("more than four wire ends meet at one point");
        }
        *wires[static_cast<std::size_t>(count++)] = static_cast<std::int16_t>((other + 1) / 2);
    });
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
    if (circuit.NumWires > kMaxWires) {
        (void)circuit.Wires[circuit.NumWires]; // a count past the table: throws
    }

    FoundPoints found;
    const EndsByPosition ends(circuit);
    for (int end = 1; end <= ends.Count(); ++end) {
        const int multiplicity = ends.Multiplicity(end);
        if (multiplicity == 1) {
            if (++found.looseEnds <= kMaxLooseEnds) {
                const Point point = ends.PointOf(end);
                const int slot = topology.NumLooseEnds + 1;
                topology.LooseEnds[slot] = LooseEnd{point.X, point.Y};
                topology.NumLooseEnds = static_cast<std::int16_t>(slot);
            }
        } else if (multiplicity >= 3 && ends.FirstAtItsPoint(end)) {
            if (++found.nodes <= kMaxNodes) {
                AddNode(circuit, ends, end);
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
