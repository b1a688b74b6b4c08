#include "analysis/wire_cleanup.h"

#include "analysis/wire_geometry.h"

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

bool SplitOnce(Circuit& circuit) {
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
    for (int i = 1; i <= circuit.NumWires; ++i) {
        if (circuit.Wires[i].Used == 0) {
            continue;
        }
        const WireLine lineI = LineOf(circuit.Wires[i]);
        for (int j = i + 1; j <= circuit.NumWires; ++j) {
            Wire& other = circuit.Wires[j];
            if (other.Used != 0 && LineOf(other) == lineI) {
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
