#include "editor/pointer_events.h"

#include "editor/editing_tools.h"
#include "editor/hit_tests.h"

namespace ampora {

bool PointerPress(Circuit& circuit, EditorState& state, Prompts& prompts, float x, float y) {
    const int device = ElementAt(circuit, x, y);
    if (device != 0) {
        switch (state.CurrentTool) {
        case kNumberTool:
            RenumberDevice(circuit, state, prompts, device);
            return true;
        case kMoveStretchTool:
            GrabDevice(circuit, state, device, x, y);
            return true;
        case kEraseTool:
            EraseDevice(circuit, state, device);
            return true;
        default:
            return false;
        }
    }
    switch (state.CurrentTool) {
    case kWireTool:
        BeginWire(state, x, y);
        return true;
    case kBatteryTool:
    case kResistorTool:
    case kSourceTool:
        return PlaceDevice(circuit, state, prompts, state.CurrentTool, x, y) != 0;
    case kMoveStretchTool:
        return BeginStretch(circuit, state, x, y);
    case kEraseTool:
        return EraseWireAt(circuit, state, x, y);
    default:
        return false;
    }
}

void PointerMove(const Circuit& circuit, EditorState& state, float x, float y) {
    if (state.DrawingWire) {
        DragWire(state, x, y);
    } else if (IsStretching(state)) {
        DragStretch(circuit, state, x, y);
    } else if (state.DraggedElement == 0 && state.CurrentTool == kMoveStretchTool) {
        HoverStretch(circuit, state, x, y);
    }
}

bool PointerRelease(Circuit& circuit, EditorState& state, float x, float y) {
    if (state.DrawingWire) {
        FinishWire(circuit, state, x, y);
    } else if (IsStretching(state)) {
        FinishStretch(circuit, state, x, y);
    } else if (state.DraggedElement != 0) {
        DropDevice(circuit, state, x, y);
    } else {
        return false;
    }
    return true;
}

bool IsDragging(const EditorState& state) {
    return state.DrawingWire || IsStretching(state) || state.DraggedElement != 0;
}

void CancelDrag(EditorState& state) {
    state.DrawingWire = false;
    state.DraggedElement = 0;
    if (IsStretching(state)) {
        state.DragState = 0;
    }
}

} // namespace ampora
