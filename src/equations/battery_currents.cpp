#include "equations/battery_currents.h"

#include "analysis/chain_currents.h"
#include "analysis/gauss_jordan.h"
#include "equations/supernode_queries.h"
#include "tables/analysis_failure.h"
#include "tables/number_text.h"

#include <cstdlib>
#include <string_view>

namespace ampora {

namespace {

// The variable number of a battery chain's current: 3 for "I3" and for "-I3".
int CurrentVariable(std::string_view name) {
    const auto number = ParseInteger(name.substr(name.front() == '-' ? 2 : 1));
    if (!number) {
        throw AnalysisFailure::CannotSolve;
    }
    return static_cast<int>(*number);
}

// One row per member other than the anchor: the battery currents leaving the member
// balance the known currents leaving it through its other chains.
int LoadSupernodeEquations(const Workspace& ws, AugmentedMatrix& matrix, int variables) {
    int row = 0;
    for (int s = 1; s <= ws.Equations.NumSuperNodes; ++s) {
        const auto& members = ws.Equations.SuperNodes[s].Nodes;
        for (std::size_t m = 1; m < members.size(); ++m) {
            ++row;
            const int slot = NodeAt(ws, members[m]);
            for (int b = 1; b <= ws.Topology.NumBranches; ++b) {
                const Branch& chain = ws.Topology.Branches[b];
                if (chain.StartNode != slot) {
                    continue;
                }
                if (IsBranchOfSN(ws.Equations, b, s)) {
                    const int k = CurrentVariable(chain.CurrentName);
                    matrix(row, k) += chain.CurrentName.front() == '-' ? -1 : 1;
                } else if (chain.Current == kUnknownCurrent) {
                    throw AnalysisFailure::CannotSolve;
                } else {
                    matrix(row, variables + 1) -= chain.Current;
                }
            }
        }
    }
    return row;
}

} // namespace

void GetSuperCurrents(Workspace& ws, Prompts& prompts, const DevicePlacements& placements) {
    const int variables = ws.Topology.NumCurrents;
    if (variables == 0) {
        return;
    }
    AugmentedMatrix matrix;
    if (LoadSupernodeEquations(ws, matrix, variables) != variables) {
        prompts.ShowMessage(kEqnSet0Message, MessageIcon::None);
        return;
    }
    Solve(matrix, variables, variables);
    std::vector<double> current(static_cast<std::size_t>(variables) + 1, 0);
    for (int row = 1; row <= variables; ++row) {
        if (matrix(row, row) != 1) {
            throw AnalysisFailure::CannotSolve; // a battery current left undetermined
        }
        current[static_cast<std::size_t>(row)] = matrix(row, variables + 1);
    }
    for (int b = 1; b <= ws.Topology.NumBranches; ++b) {
        Branch& chain = ws.Topology.Branches[b];
        if (!chain.CurrentName.empty()) {
            const double i =
                current.at(static_cast<std::size_t>(CurrentVariable(chain.CurrentName)));
            chain.Current = chain.CurrentName.front() == '-' ? -i : i;
        }
    }
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        Element& element = ws.Circuit.Elements[slot];
        if (element.Kind == kEmpty || element.Branch != 0) {
            continue;
        }
        const ChainPlacement placement = placements.at(static_cast<std::size_t>(slot));
        if (placement.chain == 0 || ws.Topology.Branches[placement.chain].CurrentName.empty()) {
            continue;
        }
        const int sign = TravelIsScreenPositive(placement.travel) ? 1 : -1;
        element.Current = sign * ws.Topology.Branches[placement.chain].Current;
        element.Branch = static_cast<std::int16_t>(sign * placement.chain);
    }
}

} // namespace ampora
