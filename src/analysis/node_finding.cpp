#include "analysis/node_finding.h"

#include "analysis/wire_geometry.h"

#include <algorithm>
#include <array>
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

// The wire ends sorted by position, so that each end's company is found at once instead of
// by comparing it with every other end. End e is the first end of slot (e + 1) / 2 when e
// is odd, its second end when even.
class EndsByPosition {
  public:
    explicit EndsByPosition(const Circuit& circuit) : count_(2 * circuit.NumWires) {
        for (int end = 1; end <= count_; ++end) {
            const Point point = EndOf(circuit, end);
            points_[Index(end)] = point;
            if (!HasNaN(point)) {
                sorted_[numSorted_++] = Entry{RowKey(point), end};
            }
        }
        std::sort(sorted_.begin(), sorted_.begin() + static_cast<std::ptrdiff_t>(numSorted_));
        for (std::size_t k = 0; k < numSorted_;) {
            std::size_t next = k + 1;
            while (next < numSorted_ && sorted_[next].key == sorted_[k].key) {
                ++next;
            }
            for (std::size_t m = k; m < next; ++m) {
                group_[Index(sorted_[m].end)] = Group{k, next};
            }
            k = next;
        }
    }

    int Count() const { return count_; }
    Point PointOf(int end) const { return points_[Index(end)]; }

    // The ends at the point of `end`, itself included, in end order; none when the point
    // holds NaN and so equals no point at all.
    std::size_t Multiplicity(int end) const {
        const Group& group = group_[Index(end)];
        return group.last - group.first;
    }
    // True for the first end, in end order, of those at its point.
    bool FirstAtItsPoint(int end) const {
        const Group& group = group_[Index(end)];
        return group.first < group.last && sorted_[group.first].end == end;
    }
    template <typename F> void ForEachAtPointOf(int end, F f) const {
        const Group& group = group_[Index(end)];
        for (std::size_t m = group.first; m < group.last; ++m) {
            f(sorted_[m].end);
        }
    }

  private:
    struct Entry {
        std::uint64_t key;
        int end;
        friend bool operator<(const Entry& a, const Entry& b) {
            return a.key < b.key || (a.key == b.key && a.end < b.end);
        }
    };
    struct Group {
        std::size_t first = 0, last = 0;
    };
    static std::size_t Index(int end) { return static_cast<std::size_t>(end - 1); }

    int count_;
    std::array<Point, 2 * kMaxWires> points_{};
    std::array<Entry, 2 * kMaxWires> sorted_{};
    std::size_t numSorted_ = 0;
    std::array<Group, 2 * kMaxWires> group_{};
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

void FindNodesInPlace(Circuit& circuit, Topology& topology) {
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

    const EndsByPosition ends(circuit);
    for (int end = 1; end <= ends.Count(); ++end) {
        const std::size_t multiplicity = ends.Multiplicity(end);
        if (multiplicity == 1) {
            const Point point = ends.PointOf(end);
            const int slot = topology.NumLooseEnds + 1;
            topology.LooseEnds[slot] = LooseEnd{point.X, point.Y}; // throws past 20
            topology.NumLooseEnds = static_cast<std::int16_t>(slot);
        } else if (multiplicity >= 3 && ends.FirstAtItsPoint(end)) {
            AddNode(circuit, ends, end);
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
