#include "analysis/branch_tracing.h"

#include "analysis/chain_path.h"
#include "analysis/key_numbering.h"
#include "tables/wire_geometry.h"

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
// answered from the wire ends and the nodes grouped by position. A walk mostly stands on a
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
        // In end order, so that the ends at each point are listed by slot, first end first.
        for (int slot = 1; slot <= circuit.NumWires; ++slot) {
            for (const int which : {0, 1}) {
                const int end = EndNumber(slot, which);
                const Point point = EndPoint(end);
                if (HasNaN(point)) {
                    continue; // NaN equals nothing: such an end has no company
                }
                const int position = positions_.Number(PositionKey(point));
                positionOf_[Index(end)] = static_cast<std::uint16_t>(position);
                Company& company = companies_[Index(position)];
                if (company.first == kNone) {
                    company.first = static_cast<std::int16_t>(end);
                } else {
                    nextAtPoint_[Index(company.last)] = static_cast<std::int16_t>(end);
                }
                company.last = static_cast<std::int16_t>(end);
                nextAtPoint_[Index(end)] = kNone;
            }
        }
        for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
            const Point at{circuit.NodeLabels[slot].X, circuit.NodeLabels[slot].Y};
            if (!HasNaN(at)) {
                Company& company = companies_[Index(positions_.Number(PositionKey(at)))];
                if (company.node == 0) {
                    company.node = static_cast<std::int16_t>(slot); // the lowest slot there
                }
            }
        }
        AnswerAtEveryEnd();
    }

    // The first node slot at the point, or 0.
    int NodeAt(Point point) const {
        if (!indexed_) {
            return NodeAtByScan(circuit_, point);
        }
        const Company* company = CompanyAt(point);
        return company == nullptr ? 0 : company->node;
    }

    // The same for a walk standing on end `which` of the wire in `slot` (-1: on none).
    int NodeAt(Point point, int slot, int which) const {
        if (!indexed_ || which < 0) {
            return NodeAt(point);
        }
        return atEnd_.at(Index(EndNumber(slot, which))).node;
    }

    // The first wire other than the one in `slot` with an end at the point, for a walk
    // standing on end `which` of it (-1: on none).
    WireEnd NextWire(Point point, int slot, int which) const {
        if (!indexed_ || which < 0) {
            const int next =
                indexed_ ? NextWireFromIndex(point, slot) : NextWireByScan(circuit_, point, slot);
            return next == 0 ? WireEnd{} : WireEnd{next, EndAt(circuit_.Wires[next], point)};
        }
        return atEnd_.at(Index(EndNumber(slot, which))).next;
    }

    // The wire end whose path text end `which` of the wire in `slot` shares: the first end at
    // the same point with the same coordinates to the bit (0 and -0 read differently).
    int TextOf(int slot, int which) const {
        const int own = EndNumber(slot, which);
        return indexed_ ? atEnd_.at(Index(own)).textOf : own;
    }

  private:
    static constexpr std::int16_t kNone = -1;
    static constexpr std::size_t kPositions = 2 * kMaxWires + kMaxNodes;

    // The ends at one point, as a list through nextAtPoint_ in end order, and its node.
    struct Company {
        std::int16_t first = kNone, last = kNone;
        std::int16_t node = 0;
    };

    // What a walk standing on one wire end needs to know.
    struct Answers {
        int node = 0;
        WireEnd next;
        int textOf = 0;
    };

    static std::size_t Index(int number) { return static_cast<std::size_t>(number); }
    static int Slot(int end) { return end / 2 + 1; }

    Point EndPoint(int end) const {
        const Wire& wire = circuit_.Wires[Slot(end)];
        return end % 2 == 0 ? FirstEnd(wire) : SecondEnd(wire);
    }

    const Company* CompanyAt(Point point) const {
        if (HasNaN(point)) {
            return nullptr;
        }
        const int position = positions_.Find(PositionKey(point));
        return position == 0 ? nullptr : &companies_[Index(position)];
    }

    // Each end gets the node at its point, the first other wire there, arriving at that
    // wire's first end there (its first end when both lie there, as EndAt decides), and the
    // end whose text it shares.
    void AnswerAtEveryEnd() {
        for (int end = 0; end < 2 * circuit_.NumWires; ++end) {
            const std::uint16_t position = positionOf_[Index(end)];
            if (position == 0) {
                continue;
            }
            const Company& company = companies_[Index(position)];
            Answers& answers = atEnd_[Index(end)];
            answers.node = company.node;
            answers.textOf = end;
            bool textFound = false;
            for (int other = company.first; other != kNone; other = nextAtPoint_[Index(other)]) {
                if (answers.next.slot == 0 && Slot(other) != Slot(end)) {
                    answers.next = WireEnd{Slot(other), other % 2};
                }
                if (!textFound && SameBits(EndPoint(other), EndPoint(end))) {
                    answers.textOf = other;
                    textFound = true;
                }
                if (answers.next.slot != 0 && textFound) {
                    break;
                }
            }
        }
    }

    int NextWireFromIndex(Point point, int current) const {
        const Company* company = CompanyAt(point);
        if (company == nullptr) {
            return 0;
        }
        for (int end = company->first; end != kNone; end = nextAtPoint_[Index(end)]) {
            if (Slot(end) != current) {
                return Slot(end);
            }
        }
        return 0;
    }

    const Circuit& circuit_;
    bool indexed_;
    KeyNumbering<std::uint64_t, std::bit_ceil(2 * kPositions)> positions_;
    std::array<std::uint16_t, 2 * kMaxWires> positionOf_{}; // 0: a point with NaN
    std::array<std::int16_t, 2 * kMaxWires> nextAtPoint_;   // set as each end joins a list
    std::array<Company, kPositions + 1> companies_{};       // by position number
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
    Branch& chain = topology.Branches[slot]; // throws past the chain slots
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
