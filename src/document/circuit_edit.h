#pragma once
// The writer rules of the circuit tables: new items take the lowest free slot,
// counts are high-water marks, and an erase goes into the one-level undo memory.

#include "tables/circuit.h"

namespace ampora {

// The lowest free slot, or 0 when the table is full.
int FindFreeWireSlot(const Circuit& circuit);
int FindFreeElementSlot(const Circuit& circuit);

// Puts a live wire into the lowest free slot and returns it; 0 (nothing stored) when full.
int AddWire(Circuit& circuit, float x1, float y1, float x2, float y2);
// Puts a device into the lowest free slot and returns it; 0 (nothing stored) when full.
int AddElement(Circuit& circuit, std::int16_t kind, float value, float x, float y);

int CountLiveWires(const Circuit& circuit);
int CountLiveElements(const Circuit& circuit);

void ClearUndoMemory(Circuit& circuit);
// Whether the undo memory marks any wire; whether it holds anything at all.
bool UndoHoldsWire(const Circuit& circuit);
bool UndoHoldsAnything(const Circuit& circuit);
// Each erase helper marks one slot in the undo memory; the caller clears the memory
// first so that only the latest erase can be undone.
void EraseWireSlot(Circuit& circuit, int slot);
void EraseElementSlot(Circuit& circuit, int slot);
// Brings back every marked wire and element. The marks stay, as they were.
void RestoreErased(Circuit& circuit);

// New: erases every live wire and element into a freshly cleared undo memory and keeps
// the counts. Returns true when anything was erased (so that Undo Erase is offered).
bool EraseWholeCircuit(Circuit& circuit);

} // namespace ampora
