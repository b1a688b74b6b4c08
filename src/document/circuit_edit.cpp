#include "document/circuit_edit.h"

#include <algorithm>

namespace ampora {

int FindFreeWireSlot(const Circuit& circuit) {
    for (int slot = 1; slot <= kMaxWires; ++slot) {
        if (circuit.Wires[slot].Used == 0) {
            return slot;
        }
    }
    return 0;
}

int FindFreeElementSlot(const Circuit& circuit) {
    for (int slot = 1; slot <= kMaxElements; ++slot) {
        if (circuit.Elements[slot].Kind == kEmpty) {
            return slot;
        }
    }
    return 0;
}

int AddWire(Circuit& circuit, float x1, float y1, float x2, float y2) {
    const int slot = FindFreeWireSlot(circuit);
    if (slot == 0) {
        return 0;
    }
    Wire& wire = circuit.Wires[slot];
    wire = Wire{x1, y1, x2, y2, kTrue};
    if (slot > circuit.NumWires) {
        circuit.NumWires = static_cast<std::int16_t>(slot);
    }
    return slot;
}

int AddElement(Circuit& circuit, std::int16_t kind, float value, float x, float y) {
    const int slot = FindFreeElementSlot(circuit);
    if (slot == 0 || kind == kEmpty) {
        return 0;
    }
    circuit.Elements[slot] = Element{kind, value, x, y, 0, 999};
    if (slot > circuit.NumElements) {
        circuit.NumElements = static_cast<std::int16_t>(slot);
    }
    return slot;
}

int CountLiveWires(const Circuit& circuit) {
    int count = 0;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        count += circuit.Wires[slot].Used != 0 ? 1 : 0;
    }
    return count;
}

int CountLiveElements(const Circuit& circuit) {
    int count = 0;
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        count += circuit.Elements[slot].Kind != kEmpty ? 1 : 0;
    }
    return count;
}

void ClearUndoMemory(Circuit& circuit) {
    circuit.ErasedWire.items.fill(0);
    circuit.ErasedKind.items.fill(0);
}

bool UndoHoldsWire(const Circuit& circuit) {
    const auto& marks = circuit.ErasedWire.items;
    return std::any_of(marks.begin(), marks.end(), [](std::int16_t mark) { return mark != 0; });
}

bool UndoHoldsAnything(const Circuit& circuit) {
    const auto& kinds = circuit.ErasedKind.items;
    return UndoHoldsWire(circuit) ||
           std::any_of(kinds.begin(), kinds.end(), [](std::int16_t kind) { return kind != 0; });
}

void EraseWireSlot(Circuit& circuit, int slot) {
    circuit.Wires[slot].Used = 0;
    circuit.ErasedWire[slot] = 1;
}

void EraseElementSlot(Circuit& circuit, int slot) {
    Element& element = circuit.Elements[slot];
    circuit.ErasedKind[slot] = element.Kind;
    element.Kind = kEmpty;
}

void RestoreErased(Circuit& circuit) {
    for (int slot = 1; slot <= kMaxWires; ++slot) {
        if (circuit.ErasedWire[slot] != 0) {
            circuit.Wires[slot].Used = kTrue;
        }
    }
    for (int slot = 1; slot <= kMaxElements; ++slot) {
        if (circuit.ErasedKind[slot] != 0) {
            circuit.Elements[slot].Kind = circuit.ErasedKind[slot];
        }
    }
}

bool EraseWholeCircuit(Circuit& circuit) {
    ClearUndoMemory(circuit);
    bool erased = false;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        if (circuit.Wires[slot].Used != 0) {
            EraseWireSlot(circuit, slot);
            erased = true;
        }
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        if (circuit.Elements[slot].Kind != kEmpty) {
            EraseElementSlot(circuit, slot);
            erased = true;
        }
    }
    return erased;
}

} // namespace ampora
