#include "editor/edit_history.h"

#include "document/circuit_edit.h"
#include "tables/workspace.h"

#include <algorithm>

namespace ampora {

namespace {

bool SameWire(const Wire& a, const Wire& b) {
    if ((a.Used != 0) != (b.Used != 0)) {
        return false;
    }
    return a.Used == 0 || (a.X1 == b.X1 && a.Y1 == b.Y1 && a.X2 == b.X2 && a.Y2 == b.Y2);
}

bool SameDevice(const Element& a, const Element& b) {
    return a.Kind == b.Kind &&
           (a.Kind == kEmpty || (a.Value == b.Value && a.X == b.X && a.Y == b.Y));
}

bool SameWires(const DrawingSnapshot& a, const DrawingSnapshot& b) {
    const int last = std::max(a.NumWires, b.NumWires);
    for (int slot = 1; slot <= last; ++slot) {
        if (!SameWire(a.Wires[slot], b.Wires[slot])) {
            return false;
        }
    }
    return true;
}

bool SameDevices(const DrawingSnapshot& a, const DrawingSnapshot& b) {
    const int last = std::max(a.NumElements, b.NumElements);
    for (int slot = 1; slot <= last; ++slot) {
        const Element& e = a.Elements[slot];
        if (!SameDevice(e, b.Elements[slot]) ||
            (e.Kind != kEmpty && a.ValueText[slot] != b.ValueText[slot])) {
            return false;
        }
    }
    return true;
}

// The same node labels in the same places; their names may differ.
bool SameNodePlaces(const DrawingSnapshot& a, const DrawingSnapshot& b) {
    if (a.NumNodes != b.NumNodes) {
        return false;
    }
    for (int slot = 1; slot <= a.NumNodes; ++slot) {
        if (a.NodeLabels[slot].X != b.NodeLabels[slot].X ||
            a.NodeLabels[slot].Y != b.NodeLabels[slot].Y) {
            return false;
        }
    }
    return true;
}

bool SameNames(const DrawingSnapshot& a, const DrawingSnapshot& b) {
    for (int slot = 1; slot <= a.NumNodes; ++slot) {
        if (a.NodeLabels[slot].Name != b.NodeLabels[slot].Name) {
            return false;
        }
    }
    return true;
}

// Whether moving between the two is a change of node names alone.
bool NamesOnly(const DrawingSnapshot& a, const DrawingSnapshot& b) {
    return SameWires(a, b) && SameDevices(a, b) && SameNodePlaces(a, b);
}

bool Allowed(const EditHistory& history, std::size_t from, std::size_t to, int workflowStep) {
    if (workflowStep == kStepEdit) {
        return true;
    }
    return workflowStep == kStepName &&
           NamesOnly(history.Steps[from].After, history.Steps[to].After);
}

void Restore(const DrawingSnapshot& s, int workflowStep, Circuit& circuit, EditorState& editor) {
    if (workflowStep == kStepName) {
        for (int slot = 1; slot <= s.NumNodes; ++slot) {
            circuit.NodeLabels[slot].Name = s.NodeLabels[slot].Name;
        }
    } else {
        circuit.Wires = s.Wires;
        circuit.NumWires = s.NumWires;
        circuit.Elements = s.Elements;
        circuit.NumElements = s.NumElements;
        circuit.NodeLabels = s.NodeLabels;
        circuit.NumNodes = s.NumNodes;
        editor.ValueText = s.ValueText;
    }
    editor.DrawingWire = false;
    editor.DraggedElement = 0;
    editor.DragState = 0;
    editor.UndoAvailable = 0;
    ClearUndoMemory(circuit);
}

bool MoveTo(EditHistory& history, std::size_t to, int workflowStep, Circuit& circuit,
            EditorState& editor) {
    Restore(history.Steps[to].After, workflowStep, circuit, editor);
    history.Present = to;
    return true;
}

std::string DeviceName(int kind) {
    if (IsBattery(kind)) {
        return "battery";
    }
    return IsResistor(kind) ? "resistor" : "current source";
}

// The kind of the first device slot that differs between the two, as it is where it is live.
int ChangedDeviceKind(const DrawingSnapshot& before, const DrawingSnapshot& after) {
    const int last = std::max(before.NumElements, after.NumElements);
    for (int slot = 1; slot <= last; ++slot) {
        const Element& b = before.Elements[slot];
        const Element& a = after.Elements[slot];
        if (!SameDevice(b, a) || before.ValueText[slot] != after.ValueText[slot]) {
            return a.Kind != kEmpty ? a.Kind : b.Kind;
        }
    }
    return kEmpty;
}

} // namespace

DrawingSnapshot TakeSnapshot(const Circuit& circuit, const EditorState& editor) {
    DrawingSnapshot s;
    s.Wires = circuit.Wires;
    s.NumWires = circuit.NumWires;
    s.Elements = circuit.Elements;
    s.NumElements = circuit.NumElements;
    s.NodeLabels = circuit.NodeLabels;
    s.NumNodes = circuit.NumNodes;
    s.ValueText = editor.ValueText;
    return s;
}

bool SameDrawing(const DrawingSnapshot& a, const DrawingSnapshot& b) {
    return NamesOnly(a, b) && SameNames(a, b);
}

void StartHistory(EditHistory& history, const Circuit& circuit, const EditorState& editor) {
    history.Steps.clear();
    history.Steps.push_back(HistoryStep{std::string(), TakeSnapshot(circuit, editor)});
    history.Present = 0;
}

bool RecordStep(EditHistory& history, const std::string& name, const Circuit& circuit,
                const EditorState& editor) {
    if (history.Steps.empty()) {
        StartHistory(history, circuit, editor);
    }
    DrawingSnapshot now = TakeSnapshot(circuit, editor);
    if (SameDrawing(history.Steps[history.Present].After, now)) {
        return false;
    }
    history.Steps.resize(history.Present + 1);
    history.Steps.push_back(HistoryStep{name, std::move(now)});
    if (history.Steps.size() > kHistorySteps + 1) {
        history.Steps.pop_front();
    }
    history.Present = history.Steps.size() - 1;
    return true;
}

void ReplacePresent(EditHistory& history, const Circuit& circuit, const EditorState& editor) {
    if (history.Steps.empty()) {
        StartHistory(history, circuit, editor);
        return;
    }
    history.Steps[history.Present].After = TakeSnapshot(circuit, editor);
}

std::string ToolStepName(const DrawingSnapshot& before, const DrawingSnapshot& after, int tool) {
    const std::string device = DeviceName(ChangedDeviceKind(before, after));
    switch (tool) {
    case kWireTool:
        return "Draw wire";
    case kBatteryTool:
        return "Place battery";
    case kResistorTool:
        return "Place resistor";
    case kSourceTool:
        return "Place current source";
    case kNumberTool:
        return "Change " + device + " value";
    case kMoveStretchTool:
        return SameWires(before, after) ? "Move " + device : "Stretch wire";
    case kEraseTool:
        return SameWires(before, after) ? "Erase " + device : "Erase wire";
    default:
        return "Edit the drawing";
    }
}

bool RecordToolStep(EditHistory& history, int tool, const Circuit& circuit,
                    const EditorState& editor) {
    if (history.Steps.empty()) {
        StartHistory(history, circuit, editor);
    }
    const std::string name =
        ToolStepName(history.Steps[history.Present].After, TakeSnapshot(circuit, editor), tool);
    return RecordStep(history, name, circuit, editor);
}

bool CanUndo(const EditHistory& history, int workflowStep) {
    return history.Present > 0 &&
           Allowed(history, history.Present, history.Present - 1, workflowStep);
}

bool CanRedo(const EditHistory& history, int workflowStep) {
    return history.Present + 1 < history.Steps.size() &&
           Allowed(history, history.Present, history.Present + 1, workflowStep);
}

std::string UndoName(const EditHistory& history) {
    return history.Present > 0 ? history.Steps[history.Present].Name : std::string();
}

std::string RedoName(const EditHistory& history) {
    return history.Present + 1 < history.Steps.size() ? history.Steps[history.Present + 1].Name
                                                      : std::string();
}

bool UndoStep(EditHistory& history, int workflowStep, Circuit& circuit, EditorState& editor) {
    return CanUndo(history, workflowStep) &&
           MoveTo(history, history.Present - 1, workflowStep, circuit, editor);
}

bool RedoStep(EditHistory& history, int workflowStep, Circuit& circuit, EditorState& editor) {
    return CanRedo(history, workflowStep) &&
           MoveTo(history, history.Present + 1, workflowStep, circuit, editor);
}

} // namespace ampora
