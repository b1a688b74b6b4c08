#include "analysis/step_transitions.h"

#include "analysis/analysis_failure.h"
#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/chain_currents.h"
#include "analysis/circuit_checks.h"
#include "analysis/gauss_jordan.h"
#include "analysis/node_finding.h"
#include "analysis/node_naming.h"
#include "analysis/wire_cleanup.h"
#include "equations/battery_currents.h"
#include "equations/counting_text.h"
#include "equations/kcl_equations.h"
#include "equations/node_voltages.h"
#include "equations/supernodes.h"

#include <cmath>
#include <string>

namespace ampora {

namespace {

TransitionResult RunStep1Analysis(Workspace& workspace, Prompts& prompts) {
    Circuit& circuit = workspace.circuit;
    Topology& topology = workspace.topology;
    CleanUpWires(circuit);
    if (circuit.NumWires == 0) {
        return TransitionResult::Stopped;
    }
    FindNodes(circuit, topology);
    TraceBranches(circuit, topology);
    const std::string refusal = TopologyCheckMessage(circuit, topology);
    if (!refusal.empty()) {
        ShowCheckMessage(prompts, refusal);
        return TransitionResult::Refused;
    }
    SumBranches(circuit, topology);
    return TransitionResult::Entered;
}

} // namespace

TransitionResult LeaveStep1(Workspace& workspace, Prompts& prompts) {
    TransitionResult result = TransitionResult::Stopped;
    try {
        result = RunStep1Analysis(workspace, prompts);
    } catch (const AnalysisFailure failure) {
        if (failure != AnalysisFailure::TwoCurrentSources) {
            return TransitionResult::Stopped;
        }
        ShowCheckMessage(prompts, FailureMessage(failure));
        return TransitionResult::Refused;
    } catch (...) {
        // A table that overflows (more wires, nodes, loose ends or chains than it holds)
        // ends the move quietly, as the step-1 checks have no message for it.
        return TransitionResult::Stopped;
    }
    if (result == TransitionResult::Entered) {
        workspace.Step = 2;
    }
    return result;
}

bool CheckNamesOnLeavingStep2(Workspace& workspace, Prompts& prompts) {
    return CheckNames(workspace.circuit, workspace.naming, NodeOrdering::ByName, prompts);
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
    const int n = ws.equations.NumUnknowns;
    ws.equations.Augmented = ws.Matrix;
    Solve(ws.Matrix, n, n);
    ws.equations.Reduced = ws.Matrix;
    if (!SolvedCellsAreFinite(ws.Matrix, n)) {
        throw AnalysisFailure::CannotSolve; // an overflow or a division by zero
    }
    ReadNodeVoltages(ws);
    const DevicePlacements placements = ComputeCurrents(ws.circuit, ws.topology);
    GetSuperCurrents(ws, prompts, placements);
    ws.equations.CountingText = LoadTextboxWithCounting(ws);
    ws.equations.EqnText = ChooseEqnText(ws, ws.preferences.SigFigs);
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
    workspace.Step = 3;
    workspace.ViewMode = 0;
    return TransitionResult::Entered;
}

void BackToStep2(Workspace& workspace) {
    workspace.Step = 2;
    workspace.ViewMode = 0;
}

void BackToStep1(Workspace& workspace) {
    workspace.Step = 1;
}

} // namespace ampora
