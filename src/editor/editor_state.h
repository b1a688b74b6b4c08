#pragma once
// What the main window remembers between mouse events while the user edits in step 1.

#include "tables/circuit.h"
#include "tables/slots.h"

#include <cstdint>
#include <string>

namespace ampora {

enum Tool : std::int16_t {
    kNoTool = 0,
    kWireTool = 1,
    kBatteryTool = 2,
    kResistorTool = 3,
    kSourceTool = 4,
    kNumberTool = 5,
    kMoveStretchTool = 6,
    kEraseTool = 7,
    kUndoEraseButton = 8, // runs Undo Erase; never becomes the current tool
};

// DragState of the Move/Stretch tool: 0 idle; 1..3 the pointer rests over a wire end
// (1 first end of a horizontal wire, 2 its second end, 3 either end of a vertical
// wire); 4..7 that end is being dragged (4, 5 horizontal first, second; 6, 7 vertical).
struct EditorState {
    std::int16_t CurrentTool = kNoTool;
    std::int16_t DragState = 0;
    std::int16_t UndoAvailable = 0;
    std::int16_t ActiveWire = 0;
    float StartX = 0, StartY = 0;
    float LastX = 0, LastY = 0;
    float EndX = 0, EndY = 0;
    float GrabX = 0, GrabY = 0;
    // Per element slot: where the device sits along ActiveWire, 0 when not on it.
    Slots<float, kMaxElements> ElementFraction;

    // True while the Wire tool draws its rubber band (Start to End).
    bool DrawingWire = false;
    // The element whose picture is being dragged by the Move/Stretch tool, 0 for none.
    std::int16_t DraggedElement = 0;
    // The value of each device as the user typed it; empty means "show the stored value"
    // (a device read from a file).
    Slots<std::string, kMaxElements> ValueText;
};

} // namespace ampora
