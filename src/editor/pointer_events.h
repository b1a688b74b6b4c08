#pragma once
// The left button on the step-1 canvas: what a press, a move and a release do with the
// current tool. The mouse and the keyboard cursor both come here, so a key does exactly
// what the button does. Points are in canvas units; the tools snap them.

#include "editor/editor_state.h"
#include "tables/circuit.h"
#include "tables/prompts.h"

namespace ampora {

// A device picture lies over the wire it sits on and takes the press. Returns true when
// the circuit or the editor state may have changed.
bool PointerPress(Circuit& circuit, EditorState& state, Prompts& prompts, float x, float y);
// With the button held a drag follows the point; without, the Move/Stretch tool notes the
// wire end under it.
void PointerMove(const Circuit& circuit, EditorState& state, float x, float y);
// Ends the drag the press began; false when nothing was being dragged.
bool PointerRelease(Circuit& circuit, EditorState& state, float x, float y);

// A wire being drawn, a wire end being stretched or a device being carried.
bool IsDragging(const EditorState& state);
// Abandons the drag: the circuit stays as it was before the press.
void CancelDrag(EditorState& state);

} // namespace ampora
