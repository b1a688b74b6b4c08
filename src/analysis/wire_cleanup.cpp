#include "analysis/wire_cleanup.h"

#include "analysis/key_numbering.h"
#include "document/circuit_edit.h"
#include "tables/wire_geometry.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace ampora {

namespace {

// Hash slots for numbering the wires' lines: a power of two, twice the wires.
constexpr std::size_t kWireHashSlots = std::bit_ceil(std::size_t{2 * kMaxWires});

bool IsPoint(const Wire& wire) {
    return wire.X1 == wire.X2 && wire.Y1 == wire.Y2;
}

bool HasNaN(const WireLine& line) {
    return std::isnan(line.Level) || std::isnan(line.Low) || std::isnan(line.High);
}

// The ends of a wire as its normal form reads them (a slanted wire lies along Level).
Point LowEnd(const WireLine& line) {
    return line.Horizontal ? Point{line.Low, line.Level} : Point{line.Level, line.Low};
}
Point HighEnd(const WireLine& line) {
    return line.Horizontal ? Point{line.High, line.Level} : Point{line.Level, line.High};
}

// The point at which wire j must be split because of wire i, if any: an end of i strictly
// inside j, the low end first.
bool SplitPoint(const WireLine& i, const WireLine& j, float& at) {
    if (i.Horizontal == j.Horizontal) {
        if (i.Level != j.Level) {
            return false;
        }
        if (j.Low < i.Low && i.Low < j.High) {
            at = i.Low;
            return true;
        }
        if (j.Low < i.High && i.High < j.High) {
            at = i.High;
            return true;
        }
        return false;
    }
    if (i.Low != j.Level && i.High != j.Level) {
        return false; // no end of i lies on the line of j: at most a crossing
    }
    if (j.Low < i.Level && i.Level < j.High) {
        at = i.Level;
        return true;
    }
    return false;
}

// Keeps the low part in the wire's own slot and puts the rest in the slot after the last,
// which is free because the table was compacted. Returns that slot.
int SplitWire(Circuit& circuit, int slot, float at) {
    const WireLine line = LineOf(circuit.Wires[slot]);
    const int added = circuit.NumWires + 1;
    Wire& piece = circuit.Wires[added]; // throws when the table is full
    circuit.NumWires = static_cast<std::int16_t>(added);
    piece.Used = kTrue;
    SetWireFromLine(circuit.Wires[slot], line.Horizontal, line.Level, line.Low, at);
    SetWireFromLine(piece, line.Horizontal, line.Level, at, line.High);
    return added;
}

// The line a wire lies on (its direction and level) as one number.
std::uint64_t LineKey(bool horizontal, float level) {
    return std::uint64_t{horizontal} << 32 | EqualityBits(level);
}

// The live wires of the table grouped by the line they lie on, each line's wires sorted by
// their low ends: repeated wires then sit side by side, and the wires holding a point
// strictly inside are found by a binary search and a short walk back. A wire with NaN in
// its form holds no point and repeats no other, and is left out.
class WiresByLine {
  public:
    explicit WiresByLine(const Circuit& circuit) : count_(circuit.NumWires) {
        std::array<std::uint16_t, kMaxWires + 1> lineOf{};
        std::array<std::uint16_t, kMaxWires + 2> sizes{};
        for (int slot = 1; slot <= count_; ++slot) {
            const Wire& wire = circuit.Wires[slot];
            if (wire.Used == 0) {
                continue;
            }
            const WireLine line = LineOf(wire);
            wires_[Index(slot)] = line;
            live_[Index(slot)] = true;
            if (!HasNaN(line)) {
                const int number = numbers_.Number(LineKey(line.Horizontal, line.Level));
                lineOf[Index(slot)] = static_cast<std::uint16_t>(number);
                ++sizes[Index(number)];
            }
        }
        for (int number = 1; number <= numbers_.Count(); ++number) {
            first_[Index(number + 1)] =
                static_cast<std::uint16_t>(first_[Index(number)] + sizes[Index(number)]);
        }
        std::array<std::uint16_t, kMaxWires + 2> filled = first_;
        for (int slot = 1; slot <= count_; ++slot) {
            if (const int number = lineOf[Index(slot)]; number != 0) {
                const WireLine& line = wires_[Index(slot)];
                members_[filled[Index(number)]++] =
                    Member{line.Low, line.High, line.High, static_cast<std::int16_t>(slot)};
            }
        }
        for (int number = 1; number <= numbers_.Count(); ++number) {
            const auto begin = Begin(number), end = End(number);
            std::sort(begin, end, [](const Member& a, const Member& b) { return a.Low < b.Low; });
            for (auto it = begin + 1; it < end; ++it) {
                it->Reach = std::max(it->High, (it - 1)->Reach);
            }
        }
    }

    // Frees the slots of the wires that repeat the form of a wire in an earlier slot.
    // Returns true when any was freed. Repeats share a line and a low end, so each is
    // looked for only among the few wires with its low end.
    bool DropRepeats(Circuit& circuit) const {
        bool dropped = false;
        for (int number = 1; number <= numbers_.Count(); ++number) {
            for (auto run = Begin(number); run < End(number);) {
                auto runEnd = run + 1;
                while (runEnd < End(number) && runEnd->Low == run->Low) {
                    ++runEnd;
                }
                for (auto a = run; a < runEnd; ++a) {
                    for (auto b = a + 1; b < runEnd; ++b) {
                        if (a->High == b->High) {
                            circuit.Wires[std::max(a->Slot, b->Slot)].Used = 0;
                            dropped = true;
                        }
                    }
                }
                run = runEnd;
            }
        }
        return dropped;
    }

    // True when an end of some wire lies strictly inside another. Wires on one line do so
    // exactly when they overlap, which shows in the sorted order; a wire across a line
    // needs a look-up for each of its ends. (A wire whose form holds NaN may still have an
    // end without, and is looked up on both lines.) May answer true for a wire of no length
    // that NaN left behind and that only touches the low end of another.
    bool AnyEndInsideAWire() const {
        for (int number = 1; number <= numbers_.Count(); ++number) {
            for (auto it = Begin(number) + 1; it < End(number); ++it) {
                if (it->Low < (it - 1)->Reach) {
                    return true;
                }
            }
        }
        for (int slot = 1; slot <= count_; ++slot) {
            if (!live_[Index(slot)]) {
                continue;
            }
            const WireLine& line = wires_[Index(slot)];
            const bool across = !HasNaN(line);
            for (const Point end : {LowEnd(line), HighEnd(line)}) {
                if (across ? AnyHolderAcross(line, end) : (!HasNaN(end) && AnyHolder(end))) {
                    return true;
                }
            }
        }
        return false;
    }

    // Calls f(slot) for every wire that holds the point, which has no NaN, strictly
    // between its ends.
    template <typename F> void ForEachHolder(Point point, F f) const {
        ForEachHolderAlong(numbers_.Find(LineKey(true, point.Y)), point.X, f);
        ForEachHolderAlong(numbers_.Find(LineKey(false, point.X)), point.Y, f);
    }

  private:
    struct Member {
        float Low, High;
        float Reach; // the highest end of this wire and those before it on its line
        std::int16_t Slot;
    };
    using Members = std::array<Member, kMaxWires>;
    static std::size_t Index(int number) { return static_cast<std::size_t>(number); }
    Members::iterator Begin(int line) { return members_.begin() + first_[Index(line)]; }
    Members::iterator End(int line) { return members_.begin() + first_[Index(line + 1)]; }
    Members::const_iterator Begin(int line) const { return members_.begin() + first_[Index(line)]; }
    Members::const_iterator End(int line) const {
        return members_.begin() + first_[Index(line + 1)];
    }

    // The members of the line whose low ends lie before `at`; any of them may hold it.
    Members::const_iterator LowBefore(int line, float at) const {
        return std::partition_point(Begin(line), End(line),
                                    [at](const Member& m) { return m.Low < at; });
    }

    template <typename F> void ForEachHolderAlong(int line, float at, F f) const {
        if (line == 0) {
            return;
        }
        const auto begin = Begin(line);
        for (auto it = LowBefore(line, at); it != begin && (--it)->Reach > at;) {
            if (it->High > at) {
                f(it->Slot);
            }
        }
    }

    bool AnyHolder(Point point) const {
        bool any = false;
        ForEachHolder(point, [&any](int) { any = true; });
        return any;
    }

    // Whether a wire across the line of `wire`, which holds no NaN, holds the end strictly.
    bool AnyHolderAcross(const WireLine& wire, Point end) const {
        const int across =
            numbers_.Find(LineKey(!wire.Horizontal, wire.Horizontal ? end.X : end.Y));
        if (across == 0) {
            return false;
        }
        const auto it = LowBefore(across, wire.Level);
        return it != Begin(across) && (it - 1)->Reach > wire.Level;
    }

    int count_;
    std::array<WireLine, kMaxWires + 1> wires_{};
    std::array<bool, kMaxWires + 1> live_{};
    KeyNumbering<std::uint64_t, kWireHashSlots> numbers_; // of the lines
    std::array<std::uint16_t, kMaxWires + 2> first_{}; // line n's wires: first_[n] to first_[n+1]
    Members members_{};
};

// The piece of the wire in `slot`, as split so far, that holds the point strictly inside;
// 0 when a split has already made the point an end. The pieces of a wire are chained from
// its own slot along the line.
int PieceHolding(const Circuit& circuit, const Slots<std::int16_t, kMaxWires>& nextPiece, int slot,
                 Point point) {
    for (int piece = slot; piece != 0; piece = nextPiece[piece]) {
        const WireLine line = LineOf(circuit.Wires[piece]);
        const float at = line.Horizontal ? point.X : point.Y;
        if (line.Low < at && at < line.High) {
            return piece;
        }
    }
    return 0;
}

// The first wire, as split so far, that holds an end of the line strictly inside; 0 when
// none does.
int FirstHolderOfAnEnd(const Circuit& circuit, const WiresByLine& byLine,
                       const Slots<std::int16_t, kMaxWires>& nextPiece, const WireLine& line) {
    int first = 0;
    for (const Point end : {LowEnd(line), HighEnd(line)}) {
        if (HasNaN(end)) {
            continue;
        }
        byLine.ForEachHolder(end, [&](int holder) {
            const int piece = PieceHolding(circuit, nextPiece, holder, end);
            if (piece != 0 && (first == 0 || piece < first)) {
                first = piece;
            }
        });
    }
    return first;
}

// Splits wires at the points where the end of another wire lies on them (T-junctions and
// overlapping collinear wires); wires that merely cross stay whole. The splits are made
// in the order of the pairwise rule: the first wire i with an end strictly inside another
// wire, then the first such wire j, split there, and the search starts over. Searching all
// pairs again after each split is not needed, because a split leaves pieces inside the
// wire it cut: a wire whose ends lie inside no wire stays so until it is itself split and
// gains an end. So the rule's i moves forward through the table (the pieces added behind
// it included) and steps back only to the wire just split, and the wires holding an end
// are pieces of the wires that held it before any split. Needs a compacted table; throws
// SlotOutOfRange when a split needs a slot beyond the table's capacity, with the splits
// before it made. Returns true when anything was split.
bool SplitTouchingWires(Circuit& circuit, const WiresByLine& byLine) {
    if (!byLine.AnyEndInsideAWire()) {
        return false;
    }
    Slots<std::int16_t, kMaxWires> nextPiece;
    bool split = false;
    for (int i = 1; i <= circuit.NumWires;) {
        const WireLine splitter = LineOf(circuit.Wires[i]);
        const int j = FirstHolderOfAnEnd(circuit, byLine, nextPiece, splitter);
        float at = 0;
        if (j == 0 || !SplitPoint(splitter, LineOf(circuit.Wires[j]), at)) {
            ++i;
            continue;
        }
        const int added = SplitWire(circuit, j, at);
        nextPiece[added] = nextPiece[j];
        nextPiece[j] = static_cast<std::int16_t>(added);
        split = true;
        i = std::min(i, j);
    }
    return split;
}

// Frees the slots of wires whose two ends are one point, which nobody can see or click.
bool RemoveZeroLengthWires(Circuit& circuit) {
    bool removed = false;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        Wire& wire = circuit.Wires[slot];
        if (wire.Used != 0 && IsPoint(wire)) {
            wire.Used = 0;
            removed = true;
        }
    }
    return removed;
}

} // namespace

bool RemoveDuplicateWires(Circuit& circuit) {
    const bool removed = RemoveZeroLengthWires(circuit);
    return WiresByLine(circuit).DropRepeats(circuit) || removed;
}

bool CompactWires(Circuit& circuit) {
    int live = 0;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        if (circuit.Wires[slot].Used != 0) {
            ++live;
            circuit.Wires[live] = circuit.Wires[slot];
            circuit.Wires[live].Used = kTrue;
        }
    }
    if (live == circuit.NumWires) {
        return false;
    }
    // Slots above the count are always free. An erased wire is gone now and its mark would
    // bring back whatever moved into its slot; the devices erased with it would come back
    // without it, so an undo that held a wire is forgotten whole.
    for (int slot = live + 1; slot <= circuit.NumWires; ++slot) {
        circuit.Wires[slot].Used = 0;
    }
    if (UndoHoldsWire(circuit)) {
        ClearUndoMemory(circuit);
    }
    circuit.NumWires = static_cast<std::int16_t>(live);
    return true;
}

void CleanUpWires(Circuit& circuit) {
    // The grouping that finds the repeats also finds the splits, unless moving the wires
    // to the front renumbers them.
    RemoveZeroLengthWires(circuit);
    WiresByLine byLine(circuit);
    byLine.DropRepeats(circuit);
    if (CompactWires(circuit)) {
        byLine = WiresByLine(circuit);
    }
    // Without a split the table is as the first pass left it, free of repeats.
    if (SplitTouchingWires(circuit, byLine) && RemoveDuplicateWires(circuit)) {
        CompactWires(circuit);
    }
}

} // namespace ampora
