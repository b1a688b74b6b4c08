#include "analysis/step_transitions.h"

#include "analysis/analysis_failure.h"
#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/circuit_checks.h"
#include "analysis/node_finding.h"
#include "analysis/node_naming.h"
#include "analysis/wire_cleanup.h"

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

void BackToStep1(Workspace& workspace) {
    workspace.Step = 1;
}

} // namespace ampora
