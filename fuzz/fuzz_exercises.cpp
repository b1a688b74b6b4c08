#include "fuzz/fuzz_exercises.h"

#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "editor/diagram_labels.h"
#include "editor/editing_tools.h"
#include "editor/hit_tests.h"
#include "editor/pointer_events.h"
#include "report/html_writer.h"
#include "report/report_builder.h"
#include "report/rich_text_document.h"
#include "report/rtf_writer.h"
#include "support/scripted_prompts.h"
#include "tables/number_text.h"
#include "workflow/step_transitions.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace ampora::test {

namespace {

// Text measured as a plain fixed-width face would be; the layout only needs some size.
LabelMetrics FixedWidthMetrics() {
    const auto width = [](std::string_view text) { return 7.0f * static_cast<float>(text.size()); };
    return LabelMetrics{width, 14, width, 14};
}

// The diagram as the window and the report draw it: every label placed, the extent taken
// and every node label hit-tested at its own centre.
std::string LayOutDiagram(const Circuit& circuit, const std::vector<std::string>& values,
                          bool withNodes) {
    const DiagramLabels labels =
        LayOutDiagramLabels(circuit, values, withNodes, FixedWidthMetrics());
    DiagramExtent(circuit, labels);
    for (std::size_t slot = 1; slot < labels.Nodes.size(); ++slot) {
        const LabelBox& box = labels.Nodes[slot].Box;
        const int hit = NodeLabelAt(labels, box.Left + box.Width / 2, box.Top + box.Height / 2);
        const bool ordinary = box.Width > 0 && box.Height > 0 && std::fabs(box.Left) < 1e6f &&
                              std::fabs(box.Top) < 1e6f; // where a centre is exact
        if (hit == 0 && ordinary) {
            return "node label " + std::to_string(slot) + " cannot be clicked where it is drawn";
        }
    }
    return "";
}

// Pictures are the window's business; the report's text goes on without them.
struct NoPictures : ReportPictures {
    ReportPicture Circuit(const Workspace&) override { return {}; }
    ReportPicture Equation(const Workspace&, int) override { return {}; }
};

// The whole report, written out as RTF and HTML as the report window saves it.
std::string CheckReport(Workspace& ws) {
    const int view = ws.ViewMode;
    RichTextDocument document;
    NoPictures pictures;
    LoadRTBoxWithReport(ws, document, pictures);
    if (ws.ViewMode != view) {
        return "the report did not put the view back";
    }
    if (RtfText(document).find("Ampora") == std::string::npos ||
        HtmlText(document, "Ampora").find("The electric power:") == std::string::npos) {
        return "the report lacks its title or its power section";
    }
    return "";
}

std::string CheckSolvedWorkspace(Workspace& ws) {
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        if (!std::isfinite(ws.Circuit.NodeLabels[slot].Voltage)) {
            return "node " + std::to_string(slot) + " has no finite voltage";
        }
    }
    for (int view = kViewValues; view <= kViewPower; ++view) {
        ws.ViewMode = static_cast<std::int16_t>(view);
        const std::vector<std::string> labels = WriteLabels(ws, ws.Preferences.SigFigs);
        for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
            const bool live = ws.Circuit.Elements[slot].Kind != kEmpty;
            if (live == labels[static_cast<std::size_t>(slot)].empty()) {
                return "view " + std::to_string(view) + " labels element " + std::to_string(slot) +
                       " wrongly";
            }
        }
        ResultsStatusText(ws, ws.Preferences.SigFigs);
    }
    if (ws.Equations.CountingText.empty()) {
        return "solved without counting text";
    }
    if (const std::string report = CheckReport(ws); !report.empty()) {
        return report;
    }
    BackToStep2(ws);
    BackToStep1(ws);
    return "";
}

} // namespace

std::string ExerciseAmqAnalysis(std::string_view bytes) {
    Workspace ws;
    EraseWholeCircuit(ws.Circuit);
    ReadCircuitText(ws.Circuit, bytes);

    // What was read must survive a save and a read unchanged, or NeedFileSave would ask
    // to save a file that was only opened.
    const std::string saved = CircuitFileText(ws.Circuit);
    Circuit reread;
    EraseWholeCircuit(reread);
    if (!ReadCircuitText(reread, saved).complete || CircuitFileText(reread) != saved) {
        return "the circuit read does not survive being written and read again";
    }

    ws.Preferences.AutoNamePattern = static_cast<std::int16_t>(1 + bytes.size() % 3);
    ws.Preferences.SigFigs = static_cast<std::int16_t>(1 + bytes.size() % 8);
    ScriptedPrompts prompts;
    const TransitionResult left = LeaveStep1(ws, prompts);
    if (left != TransitionResult::Entered) {
        if (ws.Step != 1) {
            return "a refused step 1 moved on";
        }
        // Only an empty drawing may stop without a word.
        const bool said = !prompts.messages.empty();
        const bool drawn = ws.Circuit.NumWires != 0;
        return said == (left == TransitionResult::Refused) && (said || !drawn)
                   ? ""
                   : "step 1 stopped without saying why";
    }
    if (!AutoName(ws, prompts) || LeaveStep2(ws, prompts) != TransitionResult::Entered) {
        return ws.Step == 2 ? "" : "a refused step 2 moved on";
    }
    return CheckSolvedWorkspace(ws);
}

namespace {

// The next bytes of the input, or zeros once it has run out.
struct ByteReader {
    std::string_view bytes;
    std::size_t at = 0;
    bool More() const { return at < bytes.size(); }
    unsigned Next() { return at < bytes.size() ? static_cast<unsigned char>(bytes[at++]) : 0u; }
    // A canvas position: mostly on and near the drawing, sometimes far off it, with
    // quarter units so that snapping is exercised on both sides of its rounding.
    float Coordinate() {
        const unsigned high = Next();
        const unsigned low = Next();
        const int quarters = static_cast<int>((high << 8) | low);
        if (high >= 0xF0) {
            return static_cast<float>(quarters - 0xF800) * 64.0f; // far away, either side
        }
        return static_cast<float>(quarters % 3200) / 4.0f - 40.0f;
    }
};

const char* const kAnswers[] = {"0",     "5",     "-5",    "",          "12.5", "-0",
                                "abc",   "1e39",  "-1e39", "nan",       "inf",  "1e-45",
                                " 3",    "3 ",    "-",     "+7",        "0x10", "1,5",
                                "--2",   "1e38",  "100",   "0.001",     "1000", "-3.40282e38",
                                "4e-39", "1.5.2", "\t9",   "9999999999"};

bool OnItsWire(const Circuit& circuit, const Element& e) {
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used == 0) {
            continue;
        }
        if (w.Y1 == w.Y2 && !IsVerticalKind(e.Kind) && e.Y == w.Y1 &&
            std::min(w.X1, w.X2) + 20 < e.X && e.X < std::max(w.X1, w.X2) - 20) {
            return true;
        }
        if (w.X1 == w.X2 && IsVerticalKind(e.Kind) && e.X == w.X1 &&
            std::min(w.Y1, w.Y2) + 20 < e.Y && e.Y < std::max(w.Y1, w.Y2) - 20) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string CheckEditorInvariants(const Circuit& circuit) {
    if (circuit.NumWires < 0 || circuit.NumWires > kMaxWires || circuit.NumElements < 0 ||
        circuit.NumElements > kMaxElements) {
        return "a count is past its table";
    }
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used != 0 && (w.X1 != w.X2) == (w.Y1 != w.Y2)) {
            return "wire " + std::to_string(slot) + " is slanted or has no length";
        }
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind == kEmpty) {
            continue;
        }
        if (e.Kind < 1 || e.Kind > 10 || !std::isfinite(e.Value) || e.Value < 0) {
            return "element " + std::to_string(slot) + " has kind " + std::to_string(e.Kind) +
                   " and value " + std::to_string(e.Value);
        }
        if (!OnItsWire(circuit, e)) {
            return "element " + std::to_string(slot) +
                   " is not on a wire of its axis more than 20 units from its ends";
        }
        for (int other = slot + 1; other <= circuit.NumElements; ++other) {
            const Element& o = circuit.Elements[other];
            if (o.Kind != kEmpty && std::fabs(o.X - e.X) < 36 && std::fabs(o.Y - e.Y) < 36) {
                return "elements " + std::to_string(slot) + " and " + std::to_string(other) +
                       " are closer than 36 units";
            }
        }
    }
    return "";
}

std::string ExerciseEditorEvents(std::string_view bytes, Circuit* drawn) {
    Circuit circuit;
    EditorState state;
    ScriptedPrompts prompts;
    ByteReader in{bytes};
    for (int event = 1; in.More(); ++event) {
        const unsigned op = in.Next() % 8;
        float x = 0, y = 0;
        std::string answer;
        int button = 0;
        if (op == 0) {
            button = 1 + static_cast<int>(in.Next() % 8);
            SelectTool(state, button);
        } else if (op == 1) { // mouse down, as the canvas dispatches it
            x = in.Coordinate(), y = in.Coordinate();
            const int device = ElementAt(circuit, x, y);
            const int tool = state.CurrentTool;
            if (device != 0 && tool == kNumberTool) {
                RenumberDevice(circuit, state, prompts, device);
            } else if (device != 0 && tool == kMoveStretchTool) {
                GrabDevice(circuit, state, device, x, y);
            } else if (device != 0 && tool == kEraseTool) {
                EraseDevice(circuit, state, device);
            } else if (device != 0) {
            } else if (tool == kWireTool) {
                BeginWire(state, x, y);
            } else if (tool == kBatteryTool || tool == kResistorTool || tool == kSourceTool) {
                PlaceDevice(circuit, state, prompts, tool, x, y);
            } else if (tool == kMoveStretchTool) {
                BeginStretch(circuit, state, x, y);
            } else if (tool == kEraseTool) {
                EraseWireAt(circuit, state, x, y);
            }
        } else if (op == 2 || op == 3) { // mouse move
            x = in.Coordinate(), y = in.Coordinate();
            PointerMove(circuit, state, x, y);
        } else if (op == 4 || op == 5) { // mouse up, which is the drop of a dragged device
            x = in.Coordinate(), y = in.Coordinate();
            if (state.DrawingWire) {
                FinishWire(circuit, state, x, y);
            } else if (IsStretching(state)) {
                FinishStretch(circuit, state, x, y);
            } else if (state.DraggedElement != 0) {
                DropDevice(circuit, state, x, y);
            }
        } else if (op == 6) {
            const unsigned pick = in.Next();
            answer = pick < std::size(kAnswers) ? kAnswers[pick] : std::to_string(pick % 64);
            prompts.textAnswers.push_back(answer);
        } else { // New: everything into the undo memory
            ResetEditor(state, EraseWholeCircuit(circuit));
        }
        const std::string broken = CheckEditorInvariants(circuit);
        if (!broken.empty()) {
            const char* names[] = {"button", "down", "move", "move", "up", "up", "answer", "new"};
            return "after event " + std::to_string(event) + " (" + names[op] + " " +
                   std::to_string(button) + " " + ShortestText(x) + "," + ShortestText(y) + " \"" +
                   answer + "\"): " + broken;
        }
    }
    // What the canvas then paints, and the analysis of what was drawn.
    std::vector<std::string> values(static_cast<std::size_t>(circuit.NumElements) + 1);
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        if (circuit.Elements[slot].Kind != kEmpty) {
            values[static_cast<std::size_t>(slot)] =
                ValueLabelText(circuit.Elements[slot], state.ValueText[slot]);
        }
    }
    const std::string layout = LayOutDiagram(circuit, values, false);
    if (!layout.empty()) {
        return layout;
    }
    if (drawn != nullptr) {
        *drawn = circuit;
    }
    Workspace ws;
    ws.Circuit = circuit;
    LeaveStep1(ws, prompts);
    return "";
}

} // namespace ampora::test
