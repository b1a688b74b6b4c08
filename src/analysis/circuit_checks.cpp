#include "analysis/circuit_checks.h"

namespace ampora {

std::string TopologyCheckMessage(const Circuit& circuit, const Topology& topology) {
    if (circuit.NumNodes == 0) {
        return kNoNodesMessage;
    }
    if (topology.NumLooseEnds > 0) {
        return kLooseEndsMessage;
    }
    if (topology.NumLoops > 0) {
        return kLoopsMessage;
    }
    return "";
}

std::string TooManyNodesMessage(int nodes) {
    return "You have " + std::to_string(nodes) + " nodes, but the program can analyze at most " +
           std::to_string(kMaxNodes) + ".  You must go back and remove some of them.";
}

std::string FailureMessage(AnalysisFailure failure) {
    switch (failure) {
    case AnalysisFailure::TwoCurrentSources:
        return kTwoCurrentSourcesMessage;
    case AnalysisFailure::IdenticalParallelBranches:
        return kIdenticalParallelBranchesMessage;
    case AnalysisFailure::DifferentParallelVoltages:
        return kDifferentParallelVoltagesMessage;
    case AnalysisFailure::CannotSolve:
        break;
    }
    return kCannotSolveMessage;
}

void ShowCheckMessage(Prompts& prompts, const std::string& text) {
    prompts.ShowMessage(text, MessageIcon::None);
}

} // namespace ampora
