#pragma once
// A drawing session driven tool by tool, and drawings written as short text:
// "80,80-240,80" is a wire, "6@160,80=100" a device of kind 6 at (160,80) holding 100,
// "n@16,16" a node's dot. Items are separated by blanks; erased slots are left out.

#include "document/circuit_edit.h"
#include "editor/editing_tools.h"
#include "support/scripted_prompts.h"
#include "tables/number_text.h"
#include "tables/workspace.h"

#include <cstdio>
#include <sstream>
#include <string>

namespace ampora::test {

inline Circuit ParseDrawing(const std::string& text) {
    Circuit circuit;
    std::istringstream in(text);
    std::string item;
    while (in >> item) {
        float a = 0, b = 0, c = 0, d = 0;
        int kind = 0;
        if (std::sscanf(item.c_str(), "%f,%f-%f,%f", &a, &b, &c, &d) == 4) {
            AddWire(circuit, a, b, c, d);
        } else if (std::sscanf(item.c_str(), "n@%f,%f", &a, &b) == 2) {
            circuit.NodeLabels[++circuit.NumNodes].X = a;
            circuit.NodeLabels[circuit.NumNodes].Y = b;
        } else if (std::sscanf(item.c_str(), "%d@%f,%f=%f", &kind, &a, &b, &c) == 4) {
            AddElement(circuit, static_cast<std::int16_t>(kind), c, a, b);
        }
    }
    return circuit;
}

inline std::string ShowDrawing(const Circuit& circuit) {
    const auto at = [](float x, float y) { return ShortestText(x) + "," + ShortestText(y); };
    std::string out;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used != 0) {
            out += at(w.X1, w.Y1) + "-" + at(w.X2, w.Y2) + " ";
        }
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind != kEmpty) {
            out += std::to_string(e.Kind) + "@" + at(e.X, e.Y) + "=" + ShortestText(e.Value) + " ";
        }
    }
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        out += "n@" + at(circuit.NodeLabels[slot].X, circuit.NodeLabels[slot].Y) + " ";
    }
    return out.empty() ? out : out.substr(0, out.size() - 1);
}

// Each tool as the window calls it on a press, a drag and a release; true when it acted.
struct DrawingSession {
    Workspace ws;
    EditorState editor;
    ScriptedPrompts prompts;

    bool Wire(float x1, float y1, float x2, float y2) {
        SelectTool(editor, kWireTool);
        BeginWire(editor, x1, y1);
        DragWire(editor, x2, y2);
        return FinishWire(ws.circuit, editor, x2, y2) != 0;
    }
    // No answer is queued for an empty one: the prompt is cancelled if asked.
    bool Place(int tool, float x, float y, const std::string& answer = "") {
        SelectTool(editor, tool);
        if (!answer.empty()) {
            prompts.textAnswers.push_back(answer);
        }
        return PlaceDevice(ws.circuit, editor, prompts, tool, x, y) != 0;
    }
    bool Number(int slot, const std::string& answer) {
        SelectTool(editor, kNumberTool);
        prompts.textAnswers.push_back(answer);
        RenumberDevice(ws.circuit, editor, prompts, slot);
        return true;
    }
    bool Move(int slot, float x1, float y1, float x2, float y2) {
        SelectTool(editor, kMoveStretchTool);
        GrabDevice(ws.circuit, editor, slot, x1, y1);
        return DropDevice(ws.circuit, editor, x2, y2);
    }
    bool Stretch(float x1, float y1, float x2, float y2) {
        SelectTool(editor, kMoveStretchTool);
        if (!BeginStretch(ws.circuit, editor, x1, y1)) {
            return false;
        }
        DragStretch(ws.circuit, editor, x2, y2);
        return FinishStretch(ws.circuit, editor, x2, y2);
    }
    bool EraseAt(float x, float y) {
        SelectTool(editor, kEraseTool);
        return EraseWireAt(ws.circuit, editor, x, y);
    }
    bool Erase(int slot) {
        SelectTool(editor, kEraseTool);
        EraseDevice(ws.circuit, editor, slot);
        return true;
    }
    bool Undo() { return UndoErase(ws.circuit, editor); }
};

} // namespace ampora::test
