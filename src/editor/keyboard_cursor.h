#pragma once
// Drawing without a mouse: a cursor on the 8-unit grid that the arrow keys move, and Space
// or Enter acting at it as the left button does. With the Wire and Move/Stretch tools the
// first press is the button going down and the second its release, the arrows dragging in
// between; with the other tools it is a click. Escape abandons a drag.

#include "editor/editor_state.h"
#include "tables/circuit.h"
#include "tables/prompts.h"

#include <string>

namespace ampora {

struct KeyboardCursor {
    float X = 64, Y = 64;
};

// Where the cursor may go, in canvas units, edges included.
struct CursorBounds {
    float Left = 0, Top = 0, Right = 0, Bottom = 0;
};

enum class CanvasKey { kLeft, kRight, kUp, kDown, kAct, kCancel };

constexpr float kCursorStep = 8;
constexpr float kCursorLongStep = 32;

// The toolbar button a letter presses (W Wire, B Battery, R Resistor, I Current Source,
// N Number, M Move/Stretch, E Erase, U Undo Erase), either case; 0 for any other.
int ToolButtonForLetter(char letter);

// Keeps the cursor on the grid inside the bounds.
void KeepCursorInside(KeyboardCursor& cursor, const CursorBounds& bounds);

struct KeyEffect {
    bool handled = false; // the key meant something here
    bool edited = false;  // the circuit or the drag changed: repaint and tell the window
};

// One key in step 1. `longStep` is Shift held with an arrow: 32 units instead of 8.
KeyEffect ActOnKey(Circuit& circuit, EditorState& state, Prompts& prompts, KeyboardCursor& cursor,
                   const CursorBounds& bounds, CanvasKey key, bool longStep);

// What Space would do at the cursor now, for the status bar.
std::string KeyboardHint(const Circuit& circuit, const EditorState& state,
                         const KeyboardCursor& cursor);

} // namespace ampora
