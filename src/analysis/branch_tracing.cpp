#include "analysis/branch_tracing.h"

#include "analysis/chain_path.h"
#include "analysis/wire_ends.h"
#include "tables/wire_geometry.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ampora {

namespace {

// The first node slot whose point is the given one, or 0.
int NodeAt(const Circuit& circuit, Point point) {
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& node = circuit.NodeLabels[slot];
        if (node.X == point.X && node.Y == point.Y) {
            return slot;
        }
    }
    return 0;
}

// The first wire other than `current` with an end at the point, live or already walked.
int NextWire(const EndsByPoint& ends, Point point, int current) {
    for (const WireEnd& end : ends.At(point)) {
        if (SlotOfEnd(end.end) != current) {
            return SlotOfEnd(end.end);
        }
    }
    return 0;
}

// The other end of the wire from the point when the point is one of its ends (the second
// when it is both); 0,0 when it is neither.
Point FarEnd(const Wire& wire, Point from) {
    if (FirstEnd(wire) == from) {
        return SecondEnd(wire);
    }
    return SecondEnd(wire) == from ? FirstEnd(wire) : Point{};
}

bool LiesOnWire(const Wire& wire, Point point) {
    if (wire.X1 == wire.X2) {
        return point.X == wire.X1 && point.Y >= std::min(wire.Y1, wire.Y2) &&
               point.Y <= std::max(wire.Y1, wire.Y2);
    }
    return point.Y == wire.Y1 && point.X >= std::min(wire.X1, wire.X2) &&
           point.X <= std::max(wire.X1, wire.X2);
}

struct Trace {
    std::string Path;
    std::vector<Point> Points; // the same, as numbers
};

// Walks the wire from the point the trace stands on to its far end, which joins the
// path; the wire is marked as walked.
Point Step(Circuit& circuit, Trace& trace, int wire, Point from) {
    Wire& walked = circuit.Wires[wire];
    walked.Used = 0;
    const Point to = FarEnd(walked, from);
    AppendPathPoint(trace.Path, to);
    trace.Points.push_back(to);
    return to;
}

// From `start` along `wire`, then along next wires until a node is reached (when
// `stopAtNodes`), the start point comes round again (when `stopAtStart`), or no wire goes
// on.
Trace Walk(Circuit& circuit, const EndsByPoint& ends, Point start, int wire, bool stopAtNodes,
           bool stopAtStart) {
    Trace trace;
    trace.Path.reserve(96); // a few wires' worth of ";x,y"
    AppendPathPoint(trace.Path, start);
    trace.Points.push_back(start);
    Point point = Step(circuit, trace, wire, start);
    // No chain can hold more wires than the table; a longer walk means tables that no
    // drawing produces, and it must not run for ever.
    for (int steps = 1;; ++steps) {
        if (stopAtNodes && NodeAt(circuit, point) != 0) {
            break;
        }
        if (stopAtStart && point == start) {
            break;
        }
        const int next = NextWire(ends, point, wire);
        if (next == 0) {
            break;
        }
        if (steps > circuit.NumWires) {
            throw std::runtime_error("a chain of wires that never ends");
        }
        point = Step(circuit, trace, next, point);
        wire = next;
    }
    return trace;
}

void Record(Topology& topology, std::int16_t& kindCount, std::int16_t startNode,
            std::int16_t endNode, Trace& trace) {
    const int slot = NumChains(topology) + 1;
    Branch& chain = topology.Branches[slot]; // throws past the chain slots
    chain = Branch{};
    ++kindCount;
    chain.StartNode = startNode;
    chain.EndNode = endNode;
    chain.Path = std::move(trace.Path);
}

void TraceAll(Circuit& circuit, Topology& topology) {
    // Wires do not move while chains are traced; only their Used marks change.
    const EndsByPoint ends(circuit);
    for (int n = 1; n <= circuit.NumNodes; ++n) {
        const NodeLabel& node = circuit.NodeLabels[n];
        const Point at{node.X, node.Y};
        for (const int wire : std::array<int, 4>{node.Wire1, node.Wire2, node.Wire3, node.Wire4}) {
            if (wire == 0) {
                continue;
            }
            Trace trace = Walk(circuit, ends, at, wire, true, false);
            const auto reached = static_cast<std::int16_t>(NodeAt(circuit, trace.Points.back()));
            if (reached != 0) {
                Record(topology, topology.NumBranches, static_cast<std::int16_t>(n), reached,
                       trace);
            } else {
                Record(topology, topology.NumStubs, static_cast<std::int16_t>(n), 0, trace);
            }
        }
    }

    for (int k = 1; k <= topology.NumLooseEnds; ++k) {
        const Point at{topology.LooseEnds[k].X, topology.LooseEnds[k].Y};
        int wire = 0;
        for (int slot = 1; slot <= circuit.NumWires && wire == 0; ++slot) {
            if (LiesOnWire(circuit.Wires[slot], at)) {
                wire = slot;
            }
        }
        if (wire == 0) {
            continue;
        }
        Trace trace = Walk(circuit, ends, at, wire, true, false);
        Record(topology, topology.NumLooseBranches,
               static_cast<std::int16_t>(-(topology.NumLooseBranches + 1)), 0, trace);
    }

    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& wire = circuit.Wires[slot];
        if (wire.Used == 0) {
            continue;
        }
        Trace trace = Walk(circuit, ends, FirstEnd(wire), slot, false, true);
        Record(topology, topology.NumLoops, static_cast<std::int16_t>(-(topology.NumLoops + 1)), 0,
               trace);
    }
}

} // namespace

int NumChains(const Topology& topology) {
    return topology.NumBranches + topology.NumStubs + topology.NumLooseBranches + topology.NumLoops;
}

void TraceBranches(Circuit& circuit, Topology& topology) {
    topology.NumBranches = 0;
    topology.NumStubs = 0;
    topology.NumLooseBranches = 0;
    topology.NumLoops = 0;
    topology.NumCurrents = 0;
    // Walking marks the wires; they must be live again even when the table overflows.
    struct Relive {
        Circuit& circuit;
        ~Relive() {
            const int last = std::min<int>(circuit.NumWires, kMaxWires);
            for (int slot = 1; slot <= last; ++slot) {
                circuit.Wires[slot].Used = kTrue;
            }
        }
    } relive{circuit};
    TraceAll(circuit, topology);
}

} // namespace ampora
