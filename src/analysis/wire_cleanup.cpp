#include "analysis/wire_cleanup.h"

#include "document/circuit_edit.h"
#include "tables/wire_geometry.h"

#include <array>
#include <cstdint>

namespace ampora {

namespace {

bool IsPoint(const Wire& wire) {
    return wire.X1 == wire.X2 && wire.Y1 == wire.Y2;
}

// The point at which wire j must be split because of wire i, if any: an end of i strictly
// inside j, the low end first. Wires that merely cross, with no end of either on the other,
// are not joined.
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
        at = i.Level; // a T-junction
        return true;
    }
    return false;
}

// Keeps the low part of wire j in its slot and puts the rest in the first free slot (past
// the last when none is free; throws when that is past the table).
void SplitWire(Circuit& circuit, int j, float at) {
    const WireLine line = LineOf(circuit.Wires[j]);
    int added = 1;
    while (added <= circuit.NumWires && circuit.Wires[added].Used != 0) {
        ++added;
    }
    Wire& piece = circuit.Wires[added];
    if (added > circuit.NumWires) {
        circuit.NumWires = static_cast<std::int16_t>(added);
    }
    piece.Used = kTrue;
    SetWireFromLine(circuit.Wires[j], line.Horizontal, line.Level, line.Low, at);
    SetWireFromLine(piece, line.Horizontal, line.Level, at, line.High);
}

// Finds the first ordered pair (i, j) of distinct wires, in slot order, where an end of i
// lies strictly inside j, and splits j there. False when there is none. Needs a compacted
// table, where every slot up to the count is live.
bool SplitFirstTouchingPair(Circuit& circuit) {
    const int count = circuit.NumWires;
    // The normal forms, read once for the whole scan: a split ends it.
    std::array<WireLine, kMaxWires + 1> lines;
    for (int slot = 1; slot <= count; ++slot) {
        lines[static_cast<std::size_t>(slot)] = LineOf(circuit.Wires[slot]);
    }
    for (int i = 1; i <= count; ++i) {
        for (int j = 1; j <= count; ++j) {
            float at = 0;
            const auto a = static_cast<std::size_t>(i), b = static_cast<std::size_t>(j);
            if (i != j && SplitPoint(lines[a], lines[b], at)) {
                SplitWire(circuit, j, at);
                return true;
            }
        }
    }
    return false;
}

} // namespace

bool RemoveDuplicateWires(Circuit& circuit) {
    bool removed = false;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        Wire& wire = circuit.Wires[slot];
        if (wire.Used != 0 && IsPoint(wire)) {
            wire.Used = 0;
            removed = true;
        }
    }
    const int count = circuit.NumWires;
    std::array<WireLine, kMaxWires + 1> lines;
    for (int slot = 1; slot <= count; ++slot) {
        lines[static_cast<std::size_t>(slot)] = LineOf(circuit.Wires[slot]);
    }
    for (int i = 1; i <= count; ++i) {
        if (circuit.Wires[i].Used == 0) {
            continue;
        }
        for (int j = i + 1; j <= count; ++j) {
            Wire& other = circuit.Wires[j];
            if (other.Used != 0 &&
                lines[static_cast<std::size_t>(j)] == lines[static_cast<std::size_t>(i)]) {
                other.Used = 0;
                removed = true;
            }
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
    RemoveDuplicateWires(circuit);
    CompactWires(circuit);
    // After each split the search starts again from the first pair. Only a split can make
    // a new duplicate, so the duplicates are looked for again only after one.
    bool split = false;
    while (SplitFirstTouchingPair(circuit)) {
        split = true;
    }
    if (split && RemoveDuplicateWires(circuit)) {
        CompactWires(circuit);
    }
}

} // namespace ampora
