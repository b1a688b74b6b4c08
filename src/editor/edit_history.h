#pragma once
// Undo and redo of the drawing. Each step keeps the tables as they were after a change, with
// the change's name ("Place resistor", "Move battery"). At the tables' size (100 wires, 60
// devices, 20 nodes) a whole copy per step is a few kilobytes: simpler, and harder to get
// wrong, than recording every change with its inverse.

#include "editor/editor_state.h"
#include "tables/circuit.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

namespace ampora {

// What a step brings back: the three tables with their counts, and each device's value as it
// was typed (its label shows that text). The undo memory of Undo Erase is not part of it.
struct DrawingSnapshot {
    Slots<Wire, kMaxWires> Wires;
    std::int16_t NumWires = 0;
    Slots<Element, kMaxElements> Elements;
    std::int16_t NumElements = 0;
    Slots<NodeLabel, kMaxNodes> NodeLabels;
    std::int16_t NumNodes = 0;
    Slots<std::string, kMaxElements> ValueText;
};

DrawingSnapshot TakeSnapshot(const Circuit& circuit, const EditorState& editor);

// The same drawing: the same live wires, the same devices (kind, value, place, typed text)
// and the same node labels (place and name), slot for slot. What the analysis writes into the
// tables (branches, currents, voltages) is not compared.
bool SameDrawing(const DrawingSnapshot& a, const DrawingSnapshot& b);

// At least this many changes can be undone.
constexpr std::size_t kHistorySteps = 100;

struct HistoryStep {
    std::string Name; // empty for the state the history started from
    DrawingSnapshot After;
};

struct EditHistory {
    std::deque<HistoryStep> Steps; // Steps[0] is where the history starts; the oldest go first
    std::size_t Present = 0;       // the step the tables are at
};

// An empty history at the drawing as it is (New, Open, start-up).
void StartHistory(EditHistory& history, const Circuit& circuit, const EditorState& editor);

// Adds a step named `name` when the drawing differs from the present step, dropping the steps
// that could have been redone and, past kHistorySteps, the oldest. Returns whether a step
// was added: an edit that was refused changed nothing and leaves none.
bool RecordStep(EditHistory& history, const std::string& name, const Circuit& circuit,
                const EditorState& editor);

// The wire clean-up of "Next >" renumbers and joins wires without the user editing anything:
// the present step takes the drawing as it now is, and no step is added.
void ReplacePresent(EditHistory& history, const Circuit& circuit, const EditorState& editor);

// The name of the step a canvas tool made, told by the tool and what changed: "Draw wire",
// "Place battery", "Change resistor value", "Move current source", "Stretch wire",
// "Erase wire", "Erase battery".
std::string ToolStepName(const DrawingSnapshot& before, const DrawingSnapshot& after, int tool);
// RecordStep with the tool's name for the change, measured against the present step.
bool RecordToolStep(EditHistory& history, int tool, const Circuit& circuit,
                    const EditorState& editor);

// Undo and redo reach everything in step 1; in step 2, whose analysis stands on the drawing,
// only a change of node names; in step 3 nothing.
bool CanUndo(const EditHistory& history, int workflowStep);
bool CanRedo(const EditHistory& history, int workflowStep);
// The name of the step Undo would take back or Redo would make again; empty when none.
std::string UndoName(const EditHistory& history);
std::string RedoName(const EditHistory& history);

// Moves one step back or forward and puts its drawing into the tables (in step 2 its node
// names only). Any drag in progress ends, and so does the chance to Undo Erase: its memory
// belongs to a drawing that is no longer there. False, changing nothing, when not allowed.
bool UndoStep(EditHistory& history, int workflowStep, Circuit& circuit, EditorState& editor);
bool RedoStep(EditHistory& history, int workflowStep, Circuit& circuit, EditorState& editor);

} // namespace ampora
