#include "support/fuzz_exercises.h"

#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "analysis/step_transitions.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/scripted_prompts.h"

#include <cmath>

namespace ampora::test {

namespace {

std::string CheckSolvedWorkspace(Workspace& ws) {
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        if (!std::isfinite(ws.circuit.NodeLabels[slot].Voltage)) {
            return "node " + std::to_string(slot) + " has no finite voltage";
        }
    }
    for (int view = kViewValues; view <= kViewPower; ++view) {
        ws.ViewMode = static_cast<std::int16_t>(view);
        const std::vector<std::string> labels = WriteLabels(ws, ws.preferences.SigFigs);
        for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
            const bool live = ws.circuit.Elements[slot].Kind != kEmpty;
            if (live == labels[static_cast<std::size_t>(slot)].empty()) {
                return "view " + std::to_string(view) + " labels element " + std::to_string(slot) +
                       " wrongly";
            }
        }
        ResultsStatusText(ws, ws.preferences.SigFigs);
    }
    if (ws.equations.CountingText.empty()) {
        return "solved without counting text";
    }
    BackToStep2(ws);
    BackToStep1(ws);
    return "";
}

} // namespace

std::string ExerciseAmqAnalysis(std::string_view bytes) {
    Workspace ws;
    EraseWholeCircuit(ws.circuit);
    ReadCircuitText(ws.circuit, bytes);

    // What was read must survive a save and a read unchanged, or NeedFileSave would ask
    // to save a file that was only opened.
    const std::string saved = CircuitFileText(ws.circuit);
    Circuit reread;
    EraseWholeCircuit(reread);
    if (!ReadCircuitText(reread, saved).complete || CircuitFileText(reread) != saved) {
        return "the circuit read does not survive being written and read again";
    }

    ws.preferences.AutoNamePattern = static_cast<std::int16_t>(1 + bytes.size() % 3);
    ws.preferences.SigFigs = static_cast<std::int16_t>(1 + bytes.size() % 8);
    ScriptedPrompts prompts;
    if (LeaveStep1(ws, prompts) != TransitionResult::Entered) {
        return ws.Step == 1 ? "" : "a refused step 1 moved on";
    }
    if (!AutoName(ws, prompts) || LeaveStep2(ws, prompts) != TransitionResult::Entered) {
        return ws.Step == 2 ? "" : "a refused step 2 moved on";
    }
    return CheckSolvedWorkspace(ws);
}

} // namespace ampora::test
