#include "analysis/wire_cleanup.h"

#include "analysis/wire_geometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace ampora {

namespace {

bool IsPoint(const Wire& wire) {
    return wire.X1 == wire.X2 && wire.Y1 == wire.Y2;
}

int FirstFreeSlotForSplit(const Circuit& circuit) {
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        if (circuit.Wires[slot].Used == 0) {
            return slot;
        }
    }
    return circuit.NumWires + 1;
}

void SplitWire(Circuit& circuit, int slot, float at) {
    const WireLine line = LineOf(circuit.Wires[slot]);
    const int added = FirstFreeSlotForSplit(circuit);
    Wire& piece = circuit.Wires[added]; // throws when the table is full
    if (added > circuit.NumWires) {
        circuit.NumWires = static_cast<std::int16_t>(added);
    }
    piece.Used = kTrue;
    SetWireFromLine(circuit.Wires[slot], line.Horizontal, line.Level, line.Low, at);
    SetWireFromLine(piece, line.Horizontal, line.Level, at, line.High);
}

// The point at which wire j must be split because of wire i, if any.
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

// The pass as the rule states it: the first wire i, then the first wire j, such that an
// end of i splits j. Kept for tables whose count runs past their capacity, which it
// reports as every other walk does.
bool SplitOnceByScan(Circuit& circuit) {
    for (int i = 1; i <= circuit.NumWires; ++i) {
        if (circuit.Wires[i].Used == 0) {
            continue;
        }
        const WireLine lineI = LineOf(circuit.Wires[i]);
        for (int j = 1; j <= circuit.NumWires; ++j) {
            if (j == i || circuit.Wires[j].Used == 0) {
                continue;
            }
            float at = 0;
            if (SplitPoint(lineI, LineOf(circuit.Wires[j]), at)) {
                SplitWire(circuit, j, at);
                return true;
            }
        }
    }
    return false;
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

struct EndKey {
    std::uint64_t key;
    int wire;
    friend bool operator<(const EndKey& a, const EndKey& b) { return a.key < b.key; }
};

// Where the pass would split: SplitPoint holds exactly when an end of i lies strictly
// inside j, so the ends of all live wires are sorted along rows and along columns, and each
// wire looks up the ends strictly between its own. Returns the first pair in scan order
// (i, then j), or i = 0.
struct Pair {
    int i = 0, j = 0;
};
Pair FirstSplitPair(const Circuit& circuit) {
    const int count = circuit.NumWires;
    std::array<WireLine, kMaxWires + 1> lines{};
    std::array<bool, kMaxWires + 1> live{};
    std::array<EndKey, 2 * kMaxWires> rows{}, columns{};
    std::size_t ends = 0;
    for (int slot = 1; slot <= count; ++slot) {
        const Wire& wire = circuit.Wires[slot];
        if (wire.Used == 0) {
            continue;
        }
        live[slot] = true;
        lines[slot] = LineOf(wire);
        for (const Point end : {LowEnd(lines[slot]), HighEnd(lines[slot])}) {
            if (!ampora::HasNaN(end)) {
                rows[ends] = {RowKey(end), slot};
                columns[ends] = {ColumnKey(end), slot};
                ++ends;
            }
        }
    }
    std::sort(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(ends));
    std::sort(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(ends));
    Pair first;
    for (int j = 1; j <= count; ++j) {
        const WireLine& line = lines[j];
        if (!live[j] || HasNaN(line)) {
            continue; // a wire with NaN in its form holds no point
        }
        const auto& sorted = line.Horizontal ? rows : columns;
        const auto keyOf = line.Horizontal ? RowKey : ColumnKey;
        const auto last = sorted.begin() + static_cast<std::ptrdiff_t>(ends);
        auto it = std::upper_bound(sorted.begin(), last, EndKey{keyOf(LowEnd(line)), 0});
        const std::uint64_t high = keyOf(HighEnd(line));
        for (; it != last && it->key < high; ++it) {
            if (first.i == 0 || it->wire < first.i) {
                first = Pair{it->wire, j};
            }
        }
    }
    return first;
}

bool SplitOnce(Circuit& circuit) {
    if (circuit.NumWires > kMaxWires) {
        return SplitOnceByScan(circuit);
    }
    const Pair pair = FirstSplitPair(circuit);
    if (pair.i == 0) {
        return false;
    }
    float at = 0;
    if (!SplitPoint(LineOf(circuit.Wires[pair.i]), LineOf(circuit.Wires[pair.j]), at)) {
        return SplitOnceByScan(circuit); // cannot happen; the scan stays the rule
    }
    SplitWire(circuit, pair.j, at);
    return true;
}

// A wire's normal form as one sortable number (direction, level, low end, high end from
// the most significant bits down); equal numbers are equal forms.
struct LineKey {
    __extension__ typedef unsigned __int128 Form;
    Form form;
    int slot;
    static Form Of(bool horizontal, std::uint32_t level, std::uint32_t low, std::uint32_t high) {
        return Form{horizontal} << 96 | Form{level} << 64 | Form{low} << 32 | Form{high};
    }
};

} // namespace

bool RemoveDuplicateWires(Circuit& circuit) {
    bool removed = false;
    for (int i = 1; i <= circuit.NumWires; ++i) {
        Wire& wire = circuit.Wires[i];
        if (wire.Used != 0 && IsPoint(wire)) {
            wire.Used = 0;
            removed = true;
        }
    }
    // The first of the wires that share a normal form stays. NaN equals nothing, so a
    // form holding it repeats no other.
    std::array<LineKey, kMaxWires> keys{};
    std::size_t count = 0;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& wire = circuit.Wires[slot];
        if (wire.Used == 0) {
            continue;
        }
        const WireLine line = LineOf(wire);
        if (!HasNaN(line)) {
            keys[count++] = LineKey{LineKey::Of(line.Horizontal, OrderedBits(line.Level),
                                                OrderedBits(line.Low), OrderedBits(line.High)),
                                    slot};
        }
    }
    std::sort(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(count),
              [](const LineKey& a, const LineKey& b) {
                  return a.form < b.form || (a.form == b.form && a.slot < b.slot);
              });
    for (std::size_t k = 1; k < count; ++k) {
        if (keys[k].form == keys[k - 1].form) {
            circuit.Wires[keys[k].slot].Used = 0;
            removed = true;
        }
    }
    return removed;
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
    // Slots above the count are always free, and an erased wire's mark would now bring
    // back whatever moved into its slot.
    for (int slot = live + 1; slot <= circuit.NumWires; ++slot) {
        circuit.Wires[slot].Used = 0;
    }
    for (int slot = 1; slot <= kMaxWires; ++slot) {
        circuit.ErasedWire[slot] = 0;
    }
    circuit.NumWires = static_cast<std::int16_t>(live);
    return true;
}

void SplitTouchingWires(Circuit& circuit) {
    while (SplitOnce(circuit)) {
    }
}

void CleanUpWires(Circuit& circuit) {
    RemoveDuplicateWires(circuit);
    CompactWires(circuit);
    SplitTouchingWires(circuit);
    if (RemoveDuplicateWires(circuit)) {
        CompactWires(circuit);
    }
}

} // namespace ampora
