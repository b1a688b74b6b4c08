#include "editor/editing_tools.h"

#include "document/circuit_edit.h"
#include "editor/hit_tests.h"
#include "editor/snapping.h"
#include "tables/number_text.h"

#include <algorithm>
#include <cmath>

namespace ampora {

namespace {

// Whether a device carried by a stretched wire still sits as placing it would demand: on
// that wire more than 20 units from both ends, and no other device within 36 units.
bool CarriedDeviceFits(const Circuit& circuit, int wireSlot, int slot) {
    const Wire& w = circuit.Wires[wireSlot];
    const Element& e = circuit.Elements[slot];
    const bool fitsOnWire =
        w.Y1 == w.Y2
            ? e.Y == w.Y1 && std::min(w.X1, w.X2) + 20 < e.X && e.X < std::max(w.X1, w.X2) - 20
            : e.X == w.X1 && std::min(w.Y1, w.Y2) + 20 < e.Y && e.Y < std::max(w.Y1, w.Y2) - 20;
    if (!fitsOnWire) {
        return false;
    }
    for (int other = 1; other <= circuit.NumElements; ++other) {
        const Element& o = circuit.Elements[other];
        if (other != slot && o.Kind != kEmpty && std::fabs(o.X - e.X) < 36 &&
            std::fabs(o.Y - e.Y) < 36) {
            return false;
        }
    }
    return true;
}

constexpr const char* kBatteryPrompt =
    "A negative value reverses the battery direction.\r\nEnter the battery voltage in volts.";
constexpr const char* kResistorPrompt = "Enter the resistance in ohms:";
constexpr const char* kSourcePrompt = "A negative value reverses the current source "
                                      "direction.\r\nEnter the current source current in "
                                      "amperes.";

const char* ValuePrompt(int kind) {
    if (IsBattery(kind)) {
        return kBatteryPrompt;
    }
    return IsResistor(kind) ? kResistorPrompt : kSourcePrompt;
}

// The dialog opens just below and right of the device, clear of its picture.
std::string AskValue(Prompts& prompts, const Element& e, const std::string& defaultText) {
    return prompts.AskText(ValuePrompt(e.Kind), defaultText, e.X + 24, e.Y + 24);
}

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) {
        return "";
    }
    const auto last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

std::int16_t KindForSegment(int kind, SegmentDirection direction) {
    const bool horizontal = direction == kHorizontalSegment;
    // Same axis: the direction stays; the other axis: the first code of that axis.
    if (horizontal != IsVerticalKind(kind)) {
        return static_cast<std::int16_t>(kind);
    }
    if (IsBattery(kind)) {
        return horizontal ? kBatteryLeft : kBatteryUp;
    }
    if (IsResistor(kind)) {
        return horizontal ? kResistorHorizontal : kResistorVertical;
    }
    return horizontal ? kSourceLeft : kSourceUp;
}

void ClearDrag(EditorState& state) {
    state.DragState = 0;
    state.DrawingWire = false;
    state.DraggedElement = 0;
}

} // namespace

void SelectTool(EditorState& state, int button) {
    if (button < kWireTool || button > kEraseTool) {
        return;
    }
    state.CurrentTool = static_cast<std::int16_t>(button);
    ClearDrag(state);
    state.UndoAvailable = 0;
}

void ResetEditor(EditorState& state, bool undoAvailable) {
    state.CurrentTool = kNoTool;
    ClearDrag(state);
    state.ActiveWire = 0;
    state.UndoAvailable = undoAvailable ? 1 : 0;
}

void BeginWire(EditorState& state, float x, float y) {
    state.StartX = state.LastX = state.EndX = Snap(x);
    state.StartY = state.LastY = state.EndY = Snap(y);
    state.DrawingWire = true;
}

void DragWire(EditorState& state, float x, float y) {
    if (!state.DrawingWire) {
        return;
    }
    state.EndX = Snap(x);
    state.EndY = Snap(y);
    ConstrainToAxis(state.StartX, state.StartY, state.EndX, state.EndY);
    state.LastX = state.EndX;
    state.LastY = state.EndY;
}

int FinishWire(Circuit& circuit, EditorState& state, float x, float y) {
    if (!state.DrawingWire) {
        return 0;
    }
    DragWire(state, x, y);
    state.DrawingWire = false;
    if (state.EndX == state.StartX && state.EndY == state.StartY) {
        return 0;
    }
    return AddWire(circuit, state.StartX, state.StartY, state.EndX, state.EndY);
}

int PlaceDevice(Circuit& circuit, EditorState& state, Prompts& prompts, int tool, float x,
                float y) {
    if (tool != kBatteryTool && tool != kResistorTool && tool != kSourceTool) {
        return 0;
    }
    const float sx = Snap(x);
    const float sy = Snap(y);
    const SegmentDirection direction = SegmentTest(circuit, sx, sy, 0);
    if (direction == kNoSegment) {
        return 0;
    }
    const bool horizontal = direction == kHorizontalSegment;
    std::int16_t kind = 0;
    if (tool == kBatteryTool) {
        kind = horizontal ? kBatteryLeft : kBatteryUp;
    } else if (tool == kResistorTool) {
        kind = horizontal ? kResistorHorizontal : kResistorVertical;
    } else {
        kind = horizontal ? kSourceLeft : kSourceUp;
    }
    // The picture is in place while the value is asked for.
    const int slot = AddElement(circuit, kind, 0, sx, sy);
    if (slot == 0) {
        return 0;
    }
    Element& e = circuit.Elements[slot];
    std::string answer = Trimmed(AskValue(prompts, e, "0"));
    if (answer.empty()) {
        answer = "0";
    }
    const bool negative = answer.front() == '-';
    if (IsResistor(kind)) {
        if (negative || !ParseFloat(answer)) {
            prompts.ShowMessage("Warning: Invalid entry.  Resistance changed to 0.",
                                MessageIcon::Exclamation);
            answer = "0";
        }
    } else if (!ParseFloat(answer)) {
        prompts.ShowMessage(IsBattery(kind)
                                ? "Warning: Invalid entry.  Battery voltage changed to 0."
                                : "Warning: Invalid entry.  Current changed to 0.",
                            MessageIcon::Exclamation);
        answer = "0";
    } else if (negative) {
        answer.erase(0, 1);
        e.Kind = ReversedKind(e.Kind);
    }
    e.Value = ParseFloat(answer).value_or(0);
    state.ValueText[slot] = answer;
    return slot;
}

void RenumberDevice(Circuit& circuit, EditorState& state, Prompts& prompts, int slot) {
    Element& e = circuit.Elements[slot];
    if (e.Kind == kEmpty) {
        return;
    }
    std::string answer = Trimmed(AskValue(prompts, e, ShortestText(e.Value)));
    if (answer.empty()) {
        return;
    }
    const bool negative = answer.front() == '-';
    if (!ParseFloat(answer) || (negative && IsResistor(e.Kind))) {
        prompts.ShowMessage("Warning: Invalid entry.", MessageIcon::Exclamation);
        return;
    }
    if (negative) {
        answer.erase(0, 1);
        e.Kind = ReversedKind(e.Kind);
    }
    e.Value = ParseFloat(answer).value_or(0);
    state.ValueText[slot] = answer;
}

void GrabDevice(const Circuit& circuit, EditorState& state, int slot, float x, float y) {
    const Element& e = circuit.Elements[slot];
    if (e.Kind == kEmpty) {
        return;
    }
    state.DraggedElement = static_cast<std::int16_t>(slot);
    state.GrabX = x - (e.X - 16);
    state.GrabY = y - (e.Y - 16);
}

bool DropDevice(Circuit& circuit, EditorState& state, float x, float y) {
    const int slot = state.DraggedElement;
    state.DraggedElement = 0;
    if (slot == 0) {
        return false;
    }
    const float centreX = Snap(x - state.GrabX) + 16;
    const float centreY = Snap(y - state.GrabY) + 16;
    const SegmentDirection direction = SegmentTest(circuit, centreX, centreY, slot);
    if (direction == kNoSegment) {
        return false;
    }
    Element& e = circuit.Elements[slot];
    e.X = centreX;
    e.Y = centreY;
    e.Kind = KindForSegment(e.Kind, direction);
    return true;
}

void HoverStretch(const Circuit& circuit, EditorState& state, float x, float y) {
    if (IsStretching(state)) {
        return;
    }
    int end = 0;
    const int slot = WireEndNear(circuit, Snap(x), Snap(y), end);
    if (slot == 0) {
        state.DragState = 0;
        return;
    }
    state.ActiveWire = static_cast<std::int16_t>(slot);
    const Wire& w = circuit.Wires[slot];
    state.DragState = static_cast<std::int16_t>(w.Y1 == w.Y2 ? end : 3);
}

bool BeginStretch(const Circuit& circuit, EditorState& state, float x, float y) {
    const float sx = Snap(x);
    const float sy = Snap(y);
    int end = 0;
    const int slot = WireEndNear(circuit, sx, sy, end);
    if (slot == 0) {
        return false;
    }
    state.ActiveWire = static_cast<std::int16_t>(slot);
    const Wire& w = circuit.Wires[slot];
    const bool horizontal = w.Y1 == w.Y2;
    state.DragState = static_cast<std::int16_t>((horizontal ? 3 : 5) + end);
    state.StartX = state.LastX = state.EndX = end == 1 ? w.X1 : w.X2;
    state.StartY = state.LastY = state.EndY = end == 1 ? w.Y1 : w.Y2;
    FillElementFractions(circuit, state, slot);
    return true;
}

bool IsStretching(const EditorState& state) {
    return state.DragState >= 4 && state.DragState <= 7;
}

void FixedStretchEnd(const Circuit& circuit, const EditorState& state, float& x, float& y) {
    const Wire& w = circuit.Wires[state.ActiveWire];
    const bool movingFirst = state.DragState == 4 || state.DragState == 6;
    x = movingFirst ? w.X2 : w.X1;
    y = movingFirst ? w.Y2 : w.Y1;
}

void DragStretch(const Circuit& circuit, EditorState& state, float x, float y) {
    if (!IsStretching(state)) {
        return;
    }
    float fixedX = 0;
    float fixedY = 0;
    FixedStretchEnd(circuit, state, fixedX, fixedY);
    state.EndX = Snap(x);
    state.EndY = Snap(y);
    ConstrainToAxis(fixedX, fixedY, state.EndX, state.EndY);
    state.LastX = state.EndX;
    state.LastY = state.EndY;
}

bool FinishStretch(Circuit& circuit, EditorState& state, float x, float y) {
    if (!IsStretching(state)) {
        return false;
    }
    DragStretch(circuit, state, x, y);
    const bool movingFirst = state.DragState == 4 || state.DragState == 6;
    float fixedX = 0;
    float fixedY = 0;
    FixedStretchEnd(circuit, state, fixedX, fixedY);
    state.DragState = static_cast<std::int16_t>(state.DragState == 4   ? 1
                                                : state.DragState == 5 ? 2
                                                                       : 3);
    // A wire shrunk to a point would be no wire at all; the stretch is refused.
    if (state.EndX == fixedX && state.EndY == fixedY) {
        return false;
    }
    // The stretch is tried on a copy: a wire shrunk or swung so that a device it carries
    // comes within 20 units of an end or within 36 units of another device would break
    // the rules every placement keeps, so such a stretch is refused as a whole.
    Circuit stretched = circuit;
    Wire& w = stretched.Wires[state.ActiveWire];
    (movingFirst ? w.X1 : w.X2) = state.EndX;
    (movingFirst ? w.Y1 : w.Y2) = state.EndY;
    for (int slot = 1; slot <= stretched.NumElements; ++slot) {
        const float fraction = state.ElementFraction[slot];
        Element& e = stretched.Elements[slot];
        if (fraction == 0 || e.Kind == kEmpty) {
            continue;
        }
        e.X = w.X1 + fraction * (w.X2 - w.X1);
        e.Y = w.Y1 + fraction * (w.Y2 - w.Y1);
        // A device carried onto the other axis turns with its wire.
        e.Kind = KindForSegment(e.Kind, w.Y1 == w.Y2 ? kHorizontalSegment : kVerticalSegment);
    }
    for (int slot = 1; slot <= stretched.NumElements; ++slot) {
        if (state.ElementFraction[slot] != 0 && stretched.Elements[slot].Kind != kEmpty &&
            !CarriedDeviceFits(stretched, state.ActiveWire, slot)) {
            return false;
        }
    }
    circuit = stretched;
    return true;
}

bool EraseWireAt(Circuit& circuit, EditorState& state, float x, float y) {
    const int slot = WireHit(circuit, Snap(x), Snap(y));
    if (slot == 0) {
        return false;
    }
    ClearUndoMemory(circuit);
    state.UndoAvailable = 1;
    EraseWireSlot(circuit, slot);
    FillElementFractions(circuit, state, slot);
    for (int e = 1; e <= circuit.NumElements; ++e) {
        float fraction = 0;
        if (circuit.Elements[e].Kind != kEmpty &&
            PointOnWire(circuit.Wires[slot], circuit.Elements[e].X, circuit.Elements[e].Y,
                        fraction)) {
            EraseElementSlot(circuit, e);
        }
    }
    return true;
}

void EraseDevice(Circuit& circuit, EditorState& state, int slot) {
    if (circuit.Elements[slot].Kind == kEmpty) {
        return;
    }
    ClearUndoMemory(circuit);
    EraseElementSlot(circuit, slot);
    state.UndoAvailable = 1;
}

void MatchUndoToMemory(const Circuit& circuit, EditorState& state) {
    if (!UndoHoldsAnything(circuit)) {
        state.UndoAvailable = 0;
    }
}

bool UndoErase(Circuit& circuit, EditorState& state) {
    MatchUndoToMemory(circuit, state);
    if (state.UndoAvailable != 1) {
        return false;
    }
    RestoreErased(circuit);
    state.UndoAvailable = 0;
    return true;
}

void CenterCircuit(Circuit& circuit, float width, float toolbarHeight, float freeHeight) {
    float minX = 10000;
    float minY = 10000;
    float maxX = 0;
    float maxY = 0;
    bool any = false;
    // Only the first end counts for the minimum and only the second for the maximum.
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used == 0) {
            continue;
        }
        any = true;
        minX = std::min(minX, w.X1);
        maxX = std::max(maxX, w.X2);
        minY = std::min(minY, w.Y1);
        maxY = std::max(maxY, w.Y2);
    }
    if (!any) {
        return;
    }
    const float dx = Snap((width - (maxX - minX)) / 2 - minX);
    const float dy = Snap(toolbarHeight + (freeHeight - (maxY - minY)) / 2 - minY);
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        Element& e = circuit.Elements[slot];
        if (e.Kind != kEmpty) {
            e.X += dx;
            e.Y += dy;
        }
    }
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        Wire& w = circuit.Wires[slot];
        if (w.Used != 0) {
            w.X1 += dx;
            w.X2 += dx;
            w.Y1 += dy;
            w.Y2 += dy;
        }
    }
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        circuit.NodeLabels[slot].X += dx;
        circuit.NodeLabels[slot].Y += dy;
    }
}

} // namespace ampora
