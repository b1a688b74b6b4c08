#include "editor/keyboard_cursor.h"

#include "editor/editing_tools.h"
#include "editor/hit_tests.h"
#include "editor/pointer_events.h"
#include "editor/snapping.h"
#include "editor/value_labels.h"
#include "tables/number_text.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace ampora {

namespace {

// Tools that take a press and a release as two keys.
bool ToolDrags(int tool) {
    return tool == kWireTool || tool == kMoveStretchTool;
}

std::string DeviceNoun(int kind) {
    if (IsBattery(kind)) {
        return "battery";
    }
    return IsResistor(kind) ? "resistor" : "current source";
}

std::string DeviceWithValue(const Circuit& circuit, const EditorState& state, int slot) {
    const Element& e = circuit.Elements[slot];
    return "the " + DeviceNoun(e.Kind) + " (" + ValueLabelText(e, state.ValueText[slot]) + ")";
}

std::string PointText(float x, float y) {
    return "(" + ShortestText(x) + ", " + ShortestText(y) + ")";
}

std::string ToolAction(const Circuit& circuit, const EditorState& state, float x, float y) {
    const int device = ElementAt(circuit, x, y);
    switch (state.CurrentTool) {
    case kWireTool:
        if (!state.DrawingWire) {
            return "Space starts a wire here.";
        }
        if (state.EndX == state.StartX && state.EndY == state.StartY) {
            return "Move with the arrows; Space here makes no wire; Escape abandons it.";
        }
        return "Space ends the wire from " + PointText(state.StartX, state.StartY) + " at " +
               PointText(state.EndX, state.EndY) + "; Escape abandons it.";
    case kBatteryTool:
    case kResistorTool:
    case kSourceTool: {
        const std::string noun = state.CurrentTool == kBatteryTool    ? "battery"
                                 : state.CurrentTool == kResistorTool ? "resistor"
                                                                      : "current source";
        if (device == 0 && SegmentTest(circuit, Snap(x), Snap(y), 0) != kNoSegment) {
            return "Space places a " + noun + " here.";
        }
        return "No room for a " + noun +
               " here: it needs a wire more than 20 units from both ends and clear of other "
               "devices.";
    }
    case kNumberTool:
        if (device != 0) {
            return "Space asks for a new value of " + DeviceWithValue(circuit, state, device) + ".";
        }
        return "No device here to give a value.";
    case kMoveStretchTool: {
        if (state.DraggedElement != 0) {
            const float cx = Snap(x - state.GrabX) + 16;
            const float cy = Snap(y - state.GrabY) + 16;
            const std::string what = DeviceWithValue(circuit, state, state.DraggedElement);
            if (SegmentTest(circuit, cx, cy, state.DraggedElement) == kNoSegment) {
                return "No room here: Space puts " + what + " back; Escape abandons the move.";
            }
            return "Space drops " + what + " here; Escape abandons the move.";
        }
        if (IsStretching(state)) {
            return "Space ends the stretch at " + PointText(state.EndX, state.EndY) +
                   "; Escape abandons it.";
        }
        if (device != 0) {
            return "Space picks up " + DeviceWithValue(circuit, state, device) + ".";
        }
        int end = 0;
        if (WireEndNear(circuit, Snap(x), Snap(y), end) != 0) {
            return "Space picks up the wire end here.";
        }
        return "Nothing here to move: go to a device or a wire end.";
    }
    case kEraseTool:
        if (device != 0) {
            return "Space erases " + DeviceWithValue(circuit, state, device) + ".";
        }
        if (WireHit(circuit, Snap(x), Snap(y)) != 0) {
            return "Space erases the wire here and the devices on it.";
        }
        return "Nothing here to erase.";
    default:
        return "Choose a tool: W Wire, B Battery, R Resistor, I Current Source, N Number, "
               "M Move/Stretch, E Erase, U Undo Erase.";
    }
}

} // namespace

int ToolButtonForLetter(char letter) {
    switch (std::toupper(static_cast<unsigned char>(letter))) {
    case 'W':
        return kWireTool;
    case 'B':
        return kBatteryTool;
    case 'R':
        return kResistorTool;
    case 'I':
        return kSourceTool;
    case 'N':
        return kNumberTool;
    case 'M':
        return kMoveStretchTool;
    case 'E':
        return kEraseTool;
    case 'U':
        return kUndoEraseButton;
    default:
        return 0;
    }
}

void KeepCursorInside(KeyboardCursor& cursor, const CursorBounds& bounds) {
    // The first and last grid lines inside the bounds; a cursor off the grid comes back
    // onto it.
    const float left = std::ceil(bounds.Left / kGridStep) * kGridStep;
    const float top = std::ceil(bounds.Top / kGridStep) * kGridStep;
    const float right = std::max(left, std::floor(bounds.Right / kGridStep) * kGridStep);
    const float bottom = std::max(top, std::floor(bounds.Bottom / kGridStep) * kGridStep);
    cursor.X = std::clamp(std::round(cursor.X / kGridStep) * kGridStep, left, right);
    cursor.Y = std::clamp(std::round(cursor.Y / kGridStep) * kGridStep, top, bottom);
}

KeyEffect ActOnKey(Circuit& circuit, EditorState& state, Prompts& prompts, KeyboardCursor& cursor,
                   const CursorBounds& bounds, CanvasKey key, bool longStep) {
    const float step = longStep ? kCursorLongStep : kCursorStep;
    switch (key) {
    case CanvasKey::kLeft:
    case CanvasKey::kRight:
    case CanvasKey::kUp:
    case CanvasKey::kDown: {
        cursor.X += key == CanvasKey::kLeft ? -step : key == CanvasKey::kRight ? step : 0;
        cursor.Y += key == CanvasKey::kUp ? -step : key == CanvasKey::kDown ? step : 0;
        KeepCursorInside(cursor, bounds);
        const bool dragging = IsDragging(state);
        PointerMove(circuit, state, cursor.X, cursor.Y);
        return {true, dragging};
    }
    case CanvasKey::kAct:
        KeepCursorInside(cursor, bounds);
        if (state.CurrentTool == kNoTool) {
            return {true, false};
        }
        if (ToolDrags(state.CurrentTool) && IsDragging(state)) {
            return {true, PointerRelease(circuit, state, cursor.X, cursor.Y)};
        }
        {
            bool edited = PointerPress(circuit, state, prompts, cursor.X, cursor.Y);
            if (!ToolDrags(state.CurrentTool)) {
                edited = PointerRelease(circuit, state, cursor.X, cursor.Y) || edited;
            }
            return {true, edited};
        }
    case CanvasKey::kCancel:
        if (!IsDragging(state)) {
            return {false, false};
        }
        CancelDrag(state);
        return {true, true};
    }
    return {};
}

std::string KeyboardHint(const Circuit& circuit, const EditorState& state,
                         const KeyboardCursor& cursor) {
    return " Cursor at " + PointText(cursor.X, cursor.Y) + ". " +
           ToolAction(circuit, state, cursor.X, cursor.Y) + " ";
}

} // namespace ampora
