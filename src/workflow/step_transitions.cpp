#include "workflow/step_transitions.h"

#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/chain_currents.h"
#include "analysis/circuit_checks.h"
#include "analysis/drawing_warnings.h"
#include "analysis/gauss_jordan.h"
#include "analysis/node_finding.h"
#include "analysis/node_naming.h"
#include "analysis/wire_cleanup.h"
#include "equations/battery_currents.h"
#include "equations/counting_text.h"
#include "equations/kcl_equations.h"
#include "equations/node_voltages.h"
#include "equations/supernodes.h"
#include "tables/analysis_failure.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace ampora {

namespace {

// The analysis results of the elements belong to the circuit last solved; they are
// written again from scratch for this one.
void ForgetElementResults(Circuit& circuit) {
    const int last = std::min<int>(circuit.NumElements, kMaxElements);
    for (int slot = 1; slot <= last; ++slot) {
        circuit.Elements[slot].Branch = 0;
        circuit.Elements[slot].Current = kUnknownCurrent;
    }
}

// Chains of a previous run must not show beside a circuit refused before its own are traced.
void ForgetChains(Topology& topology) {
    topology.NumBranches = 0;
    topology.NumStubs = 0;
    topology.NumLooseBranches = 0;
    topology.NumLoops = 0;
    topology.NumCurrents = 0;
    topology.Warnings.clear();
}

TransitionResult Refuse(Prompts& prompts, const std::string& message) {
    ShowCheckMessage(prompts, message);
    return TransitionResult::Refused;
}

TransitionResult RunStep1Analysis(Workspace& workspace, Prompts& prompts) {
    Circuit& circuit = workspace.Circuit;
    Topology& topology = workspace.Topology;
    ForgetElementResults(circuit);
    ForgetChains(topology);
    try {
        CleanUpWires(circuit);
    } catch (const SlotOutOfRange&) {
        return Refuse(prompts, kTooManyWiresMessage);
    }
    if (circuit.NumWires == 0) {
        return TransitionResult::Stopped;
    }
    const FoundPoints found = FindNodes(circuit, topology);
    if (found.nodes > kMaxNodes) {
        return Refuse(prompts, TooManyNodesMessage(found.nodes));
    }
    TraceBranches(circuit, topology);
    const std::string refusal = TopologyCheckMessage(circuit, topology);
    if (!refusal.empty()) {
        return Refuse(prompts, refusal);
    }
    SumBranches(circuit, topology);
    topology.Warnings = FindDrawingWarnings(circuit, topology);
    return TransitionResult::Entered;
}

} // namespace

TransitionResult LeaveStep1(Workspace& workspace, Prompts& prompts) {
    TransitionResult result = TransitionResult::Stopped;
    try {
        result = RunStep1Analysis(workspace, prompts);
    } catch (const AnalysisFailure failure) {
        return Refuse(prompts, FailureMessage(failure));
    } catch (...) {
        // A drawing no rule covers (more than four wire ends at one point, a chain that
        // never ends): the move still says that it stopped.
        return Refuse(prompts, kCannotSolveMessage);
    }
    if (result == TransitionResult::Entered) {
        workspace.Step = kStepName;
    }
    return result;
}

bool CheckNamesOnLeavingStep2(Workspace& workspace, Prompts& prompts) {
    return CheckNames(workspace.Circuit, workspace.Naming, NodeOrdering::ByName, prompts);
}

namespace {

// Only the unknowns' rows and columns and the right-hand sides are ever written; the rest
// of the matrix stays 0.
bool SolvedCellsAreFinite(const AugmentedMatrix& matrix, int unknowns) {
    for (int row = 1; row <= unknowns; ++row) {
        for (int column = 1; column <= unknowns + 1; ++column) {
            if (!std::isfinite(matrix(row, column))) {
                return false;
            }
        }
    }
    return true;
}

void SolveCircuit(Workspace& ws, Prompts& prompts) {
    PutReferenceFirst(ws);
    GetSuperNodes(ws);
    WriteNodeEquations(ws);
    const int n = ws.Equations.NumUnknowns;
    ws.Equations.Augmented = ws.Matrix;
    Solve(ws.Matrix, n, n, &ws.Equations.RowOps);
    ws.Equations.Reduced = ws.Matrix;
    if (!SolvedCellsAreFinite(ws.Matrix, n)) {
        throw AnalysisFailure::CannotSolve; // an overflow or a division by zero
    }
    ReadNodeVoltages(ws);
    const DevicePlacements placements = ComputeCurrents(ws.Circuit, ws.Topology);
    GetSuperCurrents(ws, prompts, placements);
    ws.Equations.CountingText = LoadTextboxWithCounting(ws);
    ws.Equations.EqnText = ChooseEqnText(ws, ws.Preferences.SigFigs);
}

} // namespace

TransitionResult LeaveStep2(Workspace& workspace, Prompts& prompts) {
    if (!CheckNamesOnLeavingStep2(workspace, prompts)) {
        return TransitionResult::Refused;
    }
    try {
        SolveCircuit(workspace, prompts);
    } catch (const AnalysisFailure failure) {
        ShowCheckMessage(prompts, FailureMessage(failure));
        return TransitionResult::Refused;
    } catch (...) {
        ShowCheckMessage(prompts, kCannotSolveMessage);
        return TransitionResult::Refused;
    }
    workspace.Step = kStepResults;
    workspace.ViewMode = kViewValues;
    return TransitionResult::Entered;
}

void BackToStep2(Workspace& workspace) {
    workspace.Step = kStepName;
    workspace.ViewMode = kViewValues;
}

void BackToStep1(Workspace& workspace) {
    workspace.Step = kStepEdit;
}

} // namespace ampora
