#pragma once
// A drawing session driven by short commands, and drawings written as short text:
// "80,80-240,80" is a wire, "6@160,80=100" a device of kind 6 at (160,80) holding 100,
// "n@16,16" a node's dot ("n@16,16=A" named A). Items are separated by blanks; erased slots are
// left out. The commands, each as the window calls the tools on a press, a drag and a release:
//     wire 81,79 243,110        place B 161,79 12 (B, R or I; no answer: the prompt is cancelled)
//     number 1 -5               move 1 149,71 189,71 (device 1 grabbed at the first point)
//     stretch 80,80 240,80      hover 243,77
//     erase 151,81              erase #2 (device 2)
//     undo                      tool W (a toolbar button by its letter)
//     center 500,40,300         (canvas width, toolbar height, free height)

#include "document/circuit_edit.h"
#include "editor/editing_tools.h"
#include "editor/keyboard_cursor.h"
#include "support/scripted_prompts.h"
#include "tables/number_text.h"
#include "tables/workspace.h"

#include <cstdio>
#include <sstream>
#include <stdexcept>
#include <string>

namespace ampora::test {

inline Circuit ParseDrawing(const std::string& text) {
    Circuit circuit;
    std::istringstream in(text);
    std::string item;
    while (in >> item) {
        float a = 0, b = 0, c = 0, d = 0;
        int kind = 0;
        char name[16] = "";
        if (std::sscanf(item.c_str(), "%f,%f-%f,%f", &a, &b, &c, &d) == 4) {
            AddWire(circuit, a, b, c, d);
        } else if (std::sscanf(item.c_str(), "n@%f,%f=%15s", &a, &b, name) >= 2) {
            NodeLabel& node = circuit.NodeLabels[++circuit.NumNodes];
            node.X = a, node.Y = b, node.Name = name;
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

struct DrawingSession {
    Workspace ws;
    EditorState editor;
    ScriptedPrompts prompts;

    // Runs one command; true when the tool acted.
    bool Do(const std::string& command) {
        std::istringstream in(command);
        std::string verb, answer;
        char letter = 0, comma = 0;
        int slot = 0;
        float x1 = 0, y1 = 0, x2 = 0, y2 = 0, h = 0;
        in >> verb;
        const auto point = [&](float& x, float& y) { in >> x >> comma >> y; };
        const auto rest = [&] {
            std::getline(in >> std::ws, answer);
            return answer;
        };
        if (verb == "wire") {
            point(x1, y1), point(x2, y2);
            SelectTool(editor, kWireTool);
            BeginWire(editor, x1, y1);
            DragWire(editor, x2, y2);
            return FinishWire(ws.Circuit, editor, x2, y2) != 0;
        }
        if (verb == "place") {
            in >> letter, point(x1, y1);
            const int tool = ToolButtonForLetter(letter);
            SelectTool(editor, tool);
            if (!rest().empty()) {
                prompts.textAnswers.push_back(answer);
            }
            return PlaceDevice(ws.Circuit, editor, prompts, tool, x1, y1) != 0;
        }
        if (verb == "number") {
            in >> slot;
            SelectTool(editor, kNumberTool);
            prompts.textAnswers.push_back(rest());
            RenumberDevice(ws.Circuit, editor, prompts, slot);
            return true;
        }
        if (verb == "move") {
            in >> slot, point(x1, y1), point(x2, y2);
            SelectTool(editor, kMoveStretchTool);
            GrabDevice(ws.Circuit, editor, slot, x1, y1);
            return DropDevice(ws.Circuit, editor, x2, y2);
        }
        if (verb == "stretch") {
            point(x1, y1), point(x2, y2);
            SelectTool(editor, kMoveStretchTool);
            if (!BeginStretch(ws.Circuit, editor, x1, y1)) {
                return false;
            }
            DragStretch(ws.Circuit, editor, x2, y2);
            return FinishStretch(ws.Circuit, editor, x2, y2);
        }
        if (verb == "hover") {
            point(x1, y1);
            HoverStretch(ws.Circuit, editor, x1, y1);
            return true;
        }
        if (verb == "erase") {
            SelectTool(editor, kEraseTool);
            if (in >> std::ws && in.peek() == '#') {
                in >> letter >> slot;
                EraseDevice(ws.Circuit, editor, slot);
                return true;
            }
            point(x1, y1);
            return EraseWireAt(ws.Circuit, editor, x1, y1);
        }
        if (verb == "undo") {
            return UndoErase(ws.Circuit, editor);
        }
        if (verb == "tool") {
            in >> letter;
            SelectTool(editor, ToolButtonForLetter(letter));
            return true;
        }
        if (verb == "center") {
            in >> x1 >> comma >> y1 >> comma >> h;
            CenterCircuit(ws.Circuit, x1, y1, h);
            return true;
        }
        throw std::invalid_argument("no such command: " + command);
    }
};

} // namespace ampora::test
