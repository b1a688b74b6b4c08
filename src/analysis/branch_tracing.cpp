#include "analysis/branch_tracing.h"

#include "analysis/chain_path.h"
#include "analysis/wire_geometry.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ampora {

namespace {

int NodeAtByScan(const Circuit& circuit, Point point) {
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& node = circuit.NodeLabels[slot];
        if (node.X == point.X && node.Y == point.Y) {
            return slot;
        }
    }
    return 0;
}

// The first wire other than `current` with an end at the point, live or already walked.
int NextWireByScan(const Circuit& circuit, Point point, int current) {
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& wire = circuit.Wires[slot];
        if (slot != current && (FirstEnd(wire) == point || SecondEnd(wire) == point)) {
            return slot;
        }
    }
    return 0;
}

bool LiesOnWire(const Wire& wire, Point point) {
    if (wire.X1 == wire.X2) {
        return point.X == wire.X1 && point.Y >= std::min(wire.Y1, wire.Y2) &&
               point.Y <= std::max(wire.Y1, wire.Y2);
    }
    return point.Y == wire.Y1 && point.X >= std::min(wire.X1, wire.X2) &&
           point.X <= std::max(wire.X1, wire.X2);
}

// Which end of the wire lies at the point: 0 the first, 1 the second (the first when both
// do), -1 neither.
int EndAt(const Wire& wire, Point point) {
    if (FirstEnd(wire) == point) {
        return 0;
    }
    return SecondEnd(wire) == point ? 1 : -1;
}

// Equal to the bit: 0 and -0 are one point but read differently.
bool SameBits(Point point, Point other) {
    return std::bit_cast<std::uint64_t>(point) == std::bit_cast<std::uint64_t>(other);
}

// A wire end by number: 2 (slot - 1) for the first end of the wire in `slot`, one more for
// its second end.
int EndNumber(int slot, int which) {
    return 2 * (slot - 1) + which;
}

// The walk's two questions, which node lies at a point and which wire goes on from it,
// answered from the wire ends and the nodes sorted by position. A walk mostly stands on a
// wire end, so both answers are worked out once for every end. Wires do not move while
// chains are traced (only their Used marks change, which the questions ignore). Tables
// whose counts run past their capacity get the plain scans, which report that.
class Junctions {
  public:
    // The wire a walk goes on along, and the end of it where it arrives.
    struct WireEnd {
        int slot = 0; // 0: none
        int which = -1;
    };

    explicit Junctions(const Circuit& circuit)
        : circuit_(circuit),
          indexed_(circuit.NumWires <= kMaxWires && circuit.NumNodes <= kMaxNodes) {
        if (!indexed_) {
            return;
        }
        for (int slot = 1; slot <= circuit.NumWires; ++slot) {
            const Wire& wire = circuit.Wires[slot];
            for (const int which : {0, 1}) {
                const Point end = which == 0 ? FirstEnd(wire) : SecondEnd(wire);
                if (!HasNaN(end)) {
                    ends_[numEnds_++] = Entry{RowKey(end), EndNumber(slot, which)};
                }
            }
        }
        std::sort(ends_.begin(), ends_.begin() + static_cast<std::ptrdiff_t>(numEnds_));
        for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
            const Point at{circuit.NodeLabels[slot].X, circuit.NodeLabels[slot].Y};
            if (!HasNaN(at)) {
                nodes_[numNodes_++] = Entry{RowKey(at), slot};
            }
        }
        std::sort(nodes_.begin(), nodes_.begin() + static_cast<std::ptrdiff_t>(numNodes_));
        AnswerAtEveryEnd();
    }

    // The first node slot at the point, or 0.
    int NodeAt(Point point) const {
        if (!indexed_) {
            return NodeAtByScan(circuit_, point);
        }
        const Entry* node = First(nodes_, numNodes_, point);
        return node == nullptr ? 0 : node->id;
    }

    // The same for a walk standing on end `which` of the wire in `slot` (-1: on none).
    int NodeAt(Point point, int slot, int which) const {
        if (!indexed_ || which < 0) {
            return NodeAt(point);
        }
        return atEnd_.at(static_cast<std::size_t>(EndNumber(slot, which))).node;
    }

    // The first wire other than the one in `slot` with an end at the point, for a walk
    // standing on end `which` of it (-1: on none).
    WireEnd NextWire(Point point, int slot, int which) const {
        if (!indexed_ || which < 0) {
            const int next =
                indexed_ ? NextWireFromIndex(point, slot) : NextWireByScan(circuit_, point, slot);
            return next == 0 ? WireEnd{} : WireEnd{next, EndAt(circuit_.Wires[next], point)};
        }
        return atEnd_.at(static_cast<std::size_t>(EndNumber(slot, which))).next;
    }

    // The wire end whose path text end `which` of the wire in `slot` shares: the first end at
    // the same point with the same coordinates to the bit (0 and -0 read differently).
    int TextOf(int slot, int which) const {
        const int own = EndNumber(slot, which);
        return indexed_ ? atEnd_.at(static_cast<std::size_t>(own)).textOf : own;
    }

  private:
    struct Entry {
        std::uint64_t key;
        // A wire end's EndNumber (so ends sort by slot, the first end first), or a node slot.
        int id;
        friend bool operator<(const Entry& a, const Entry& b) {
            return a.key < b.key || (a.key == b.key && a.id < b.id);
        }
        int Slot() const { return id / 2 + 1; }
        int Which() const { return id % 2; }
    };

    // What a walk standing on one wire end needs to know.
    struct Answers {
        int node = 0;
        WireEnd next;
        int textOf = 0;
    };

    // Each run of ends at one point gets the node there, and each end in it the first other
    // wire of the run, arriving at that wire's first end in the run (its first end when
    // both lie there, as EndAt decides).
    void AnswerAtEveryEnd() {
        std::size_t node = 0;
        for (std::size_t run = 0; run < numEnds_;) {
            const std::uint64_t key = ends_[run].key;
            std::size_t runEnd = run;
            while (runEnd < numEnds_ && ends_[runEnd].key == key) {
                ++runEnd;
            }
            while (node < numNodes_ && nodes_[node].key < key) {
                ++node;
            }
            const int nodeHere = node < numNodes_ && nodes_[node].key == key ? nodes_[node].id : 0;
            for (std::size_t k = run; k < runEnd; ++k) {
                Answers& answers = atEnd_.at(static_cast<std::size_t>(ends_[k].id));
                answers.node = nodeHere;
                answers.textOf = ends_[k].id;
                for (std::size_t other = run; other < k; ++other) {
                    if (SameBits(ends_[other].id, ends_[k].id)) {
                        answers.textOf = ends_[other].id;
                        break;
                    }
                }
                for (std::size_t other = run; other < runEnd; ++other) {
                    if (ends_[other].Slot() != ends_[k].Slot()) {
                        answers.next = WireEnd{ends_[other].Slot(), ends_[other].Which()};
                        break;
                    }
                }
            }
            run = runEnd;
        }
    }

    bool SameBits(int end, int other) const {
        return ampora::SameBits(EndPoint(end), EndPoint(other));
    }
    Point EndPoint(int end) const {
        const Wire& wire = circuit_.Wires[end / 2 + 1];
        return end % 2 == 0 ? FirstEnd(wire) : SecondEnd(wire);
    }

    int NextWireFromIndex(Point point, int current) const {
        const Entry* end = First(ends_, numEnds_, point);
        if (end == nullptr) {
            return 0;
        }
        const Entry* last = ends_.data() + numEnds_;
        for (; end != last && end->key == RowKey(point); ++end) {
            if (end->Slot() != current) {
                return end->Slot();
            }
        }
        return 0;
    }

    // The entry with the lowest slot at the point, or nullptr.
    template <std::size_t N>
    static const Entry* First(const std::array<Entry, N>& sorted, std::size_t count, Point point) {
        if (HasNaN(point)) {
            return nullptr; // NaN equals nothing
        }
        const std::uint64_t key = RowKey(point);
        const auto last = sorted.begin() + static_cast<std::ptrdiff_t>(count);
        const auto it = std::lower_bound(sorted.begin(), last, Entry{key, 0});
        return it != last && it->key == key ? &*it : nullptr;
    }

    const Circuit& circuit_;
    bool indexed_;
    std::array<Entry, 2 * kMaxWires> ends_{};
    std::size_t numEnds_ = 0;
    std::array<Entry, kMaxNodes> nodes_{};
    std::size_t numNodes_ = 0;
    std::array<Answers, 2 * kMaxWires> atEnd_{};
};

struct Trace {
    std::string Path;
    std::vector<Point> Points; // the same, as numbers
    Point End;
};

// The text of each point where wire ends meet, written when a walk first reaches it: most
// are reached by both traces of each chain through them.
class EndTexts {
  public:
    // Appends ";x,y" for the point of the wire end numbered `end` (see Junctions::TextOf),
    // or "x,y" when it begins the path.
    void Append(std::string& path, int end, Point point) {
        Text& text = texts_.at(static_cast<std::size_t>(end));
        if (text.length == 0) {
            text.chars[0] = ';';
            text.length = static_cast<std::uint8_t>(WritePathPoint(text.chars.data() + 1, point) -
                                                    text.chars.data());
        }
        const std::size_t skip = path.empty() ? 1 : 0;
        path.append(text.chars.data() + skip, text.length - skip);
    }

  private:
    struct Text {
        std::array<char, kPathPointTextSize + 1> chars;
        std::uint8_t length = 0; // 0 until written
    };
    std::array<Text, 2 * kMaxWires> texts_;
};

class Tracer {
  public:
    Tracer(Circuit& circuit, const Junctions& junctions)
        : circuit_(circuit), junctions_(junctions) {}
    // From `start` along `wire`, then along next wires until a node is reached (when
    // `stopAtNodes`), the start point comes round again (when `stopAtStart`), or no wire
    // goes on.
    Trace Walk(Point start, int wire, bool stopAtNodes, bool stopAtStart) {
        Trace trace;
        trace.Points.reserve(8);
        trace.Path.reserve(96); // a few wires' worth of ";x,y", grown only by longer chains
        const Wire& first = circuit_.Wires[wire];
        const int from = EndAt(first, start);
        if (from >= 0 && SameBits(start, from == 0 ? FirstEnd(first) : SecondEnd(first))) {
            ends_.Append(trace.Path, junctions_.TextOf(wire, from), start);
        } else {
            AppendPathPoint(trace.Path, start);
        }
        trace.Points.push_back(start);
        int current = wire;
        int at = Step(trace, wire, from);
        Point point = trace.Points.back();
        // No chain can hold more wires than the table; a longer walk means tables that no
        // drawing produces, and it must not run for ever.
        for (int steps = 1;; ++steps) {
            if (stopAtNodes && junctions_.NodeAt(point, current, at) != 0) {
                break;
            }
            if (stopAtStart && point == start) {
                break;
            }
            const Junctions::WireEnd next = junctions_.NextWire(point, current, at);
            if (next.slot == 0) {
                break;
            }
            if (steps > circuit_.NumWires) {
                throw std::runtime_error("a chain of wires that never ends");
            }
            at = Step(trace, next.slot, next.which);
            point = trace.Points.back();
            current = next.slot;
        }
        trace.End = point;
        return trace;
    }

  private:
    // Walks the wire from its end `from` (0 first, 1 second) to the other end, or to 0,0
    // when the walk stands on neither end (-1); returns the end where it arrives.
    int Step(Trace& trace, int wire, int from) {
        Wire& walked = circuit_.Wires[wire];
        walked.Used = 0;
        if (from < 0) {
            const Point nowhere{};
            AppendPathPoint(trace.Path, nowhere);
            trace.Points.push_back(nowhere);
            return -1;
        }
        const int to = 1 - from;
        const Point end = to == 0 ? FirstEnd(walked) : SecondEnd(walked);
        ends_.Append(trace.Path, junctions_.TextOf(wire, to), end);
        trace.Points.push_back(end);
        return to;
    }

    Circuit& circuit_;
    const Junctions& junctions_;
    EndTexts ends_;
};

void Record(Topology& topology, std::int16_t& kindCount, std::int16_t startNode,
            std::int16_t endNode, Trace& trace) {
    const int slot = NumChains(topology) + 1;
    Branch& chain = topology.Branches[slot]; // throws past the 40 chain slots
    chain = Branch{};
    ++kindCount;
    chain.StartNode = startNode;
    chain.EndNode = endNode;
    chain.Path = std::move(trace.Path);
    KeepTracedPoints(topology, slot, std::move(trace.Points));
}

void TraceAll(Circuit& circuit, Topology& topology) {
    const Junctions junctions(circuit);
    Tracer tracer(circuit, junctions);
    for (int n = 1; n <= circuit.NumNodes; ++n) {
        const NodeLabel& node = circuit.NodeLabels[n];
        const Point at{node.X, node.Y};
        for (const int wire : std::array<int, 4>{node.Wire1, node.Wire2, node.Wire3, node.Wire4}) {
            if (wire == 0) {
                continue;
            }
            Trace trace = tracer.Walk(at, wire, true, false);
            const auto reached = static_cast<std::int16_t>(junctions.NodeAt(trace.End));
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
        Trace trace = tracer.Walk(at, wire, true, false);
        Record(topology, topology.NumLooseBranches,
               static_cast<std::int16_t>(-(topology.NumLooseBranches + 1)), 0, trace);
    }

    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& wire = circuit.Wires[slot];
        if (wire.Used == 0) {
            continue;
        }
        Trace trace = tracer.Walk(FirstEnd(wire), slot, false, true);
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
