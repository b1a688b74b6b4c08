#pragma once
// The eight tools of step 1 as plain procedures over the circuit tables and the editor
// state. The window turns mouse events into canvas units and calls these; anything the
// user must answer goes through the Prompts port.

#include "editor/editor_state.h"
#include "tables/circuit.h"
#include "tables/prompts.h"

namespace ampora {

// Toolbar buttons 1..7 make their tool current and end any chance to undo; button 8
// runs UndoErase and leaves the current tool as it was.
void SelectTool(EditorState& state, int button);

// After New: no tool, no drag, and Undo Erase offered when New erased anything. After a
// file read, `undoAvailable` is false: a read is never undone.
void ResetEditor(EditorState& state, bool undoAvailable);

// Wire tool. Points are raw canvas positions; the tool snaps them.
void BeginWire(EditorState& state, float x, float y);
void DragWire(EditorState& state, float x, float y);
// Stores the wire and returns its slot; 0 when the drag ended where it began.
int FinishWire(Circuit& circuit, EditorState& state, float x, float y);

// Battery, Resistor and Current Source tools: places a device of the tool's kind on the
// wire under the point and asks for its value. Returns the slot, 0 when nothing was placed.
int PlaceDevice(Circuit& circuit, EditorState& state, Prompts& prompts, int tool, float x, float y);

// Number tool on device `slot`: asks for a new value.
void RenumberDevice(Circuit& circuit, EditorState& state, Prompts& prompts, int slot);

// Move/Stretch tool, moving a device: the press notes where in the picture the pointer
// grabbed it; the drop moves it when the segment test passes there. Returns true when
// the device moved.
void GrabDevice(const Circuit& circuit, EditorState& state, int slot, float x, float y);
bool DropDevice(Circuit& circuit, EditorState& state, float x, float y);

// Move/Stretch tool, stretching a wire. Hover sets DragState 1..3 over a wire end (0
// elsewhere); the press picks that end; the release stores it and carries the wire's
// devices along at their fractions.
void HoverStretch(const Circuit& circuit, EditorState& state, float x, float y);
bool BeginStretch(const Circuit& circuit, EditorState& state, float x, float y);
void DragStretch(const Circuit& circuit, EditorState& state, float x, float y);
bool FinishStretch(Circuit& circuit, EditorState& state, float x, float y);
bool IsStretching(const EditorState& state);
// The end that stays put while ActiveWire is stretched.
void FixedStretchEnd(const Circuit& circuit, const EditorState& state, float& x, float& y);

// Erase tool on the canvas: erases the wire under the point and the devices on it.
// Returns true when something was erased.
bool EraseWireAt(Circuit& circuit, EditorState& state, float x, float y);
// Erase tool on a device picture.
void EraseDevice(Circuit& circuit, EditorState& state, int slot);
// Undo Erase: brings back what the last erase (or New) removed, once.
bool UndoErase(Circuit& circuit, EditorState& state);
// Undo Erase stays offered only while the undo memory holds something: the wire clean-up
// of "Next >" lets go of an erase that held a wire, which it renumbers away.
void MatchUndoToMemory(const Circuit& circuit, EditorState& state);

// Moves the drawing to the middle of a canvas `width` wide whose free part starts
// `toolbarHeight` down and is `freeHeight` high. Does nothing to an empty drawing.
void CenterCircuit(Circuit& circuit, float width, float toolbarHeight, float freeHeight);

} // namespace ampora
