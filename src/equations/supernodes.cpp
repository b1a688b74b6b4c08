#include "equations/supernodes.h"

#include "analysis/analysis_failure.h"
#include "equations/supernode_queries.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace ampora {

namespace {

bool IsBatteryChain(const Branch& chain) {
    return !chain.CurrentName.empty();
}

// The name shared by a chain and its twin traced from the other end ("I3" and "-I3").
std::string ChainPairName(const Branch& chain) {
    return chain.CurrentName.front() == '-' ? chain.CurrentName.substr(1) : chain.CurrentName;
}

// Battery voltages are single-precision; their sums along two paths count as equal when
// they agree to that precision.
bool SameVoltage(double a, double b) {
    return std::fabs(a - b) <= 1e-6 * std::max({std::fabs(a), std::fabs(b), 1e-30});
}

struct WalkedChain {
    std::string pairName;
    int from = 0;
    int to = 0;
};

void ClearSuperNodes(Workspace& ws) {
    Equations& eq = ws.equations;
    for (int s = 1; s <= kMaxSuperNodes; ++s) {
        eq.SuperNodes[s] = SuperNode{};
    }
    eq.NumSuperNodes = 0;
    eq.Constraints.clear();
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        ws.circuit.NodeLabels[slot].Alias.clear();
        ws.circuit.NodeLabels[slot].AliasOffset = 0;
    }
}

void BuildEquationVariables(Workspace& ws) {
    Equations& eq = ws.equations;
    eq.EqnVars.clear();
    for (int position = 1; position <= ws.circuit.NumNodes; ++position) {
        if (IsReferencePosition(ws, position)) {
            continue;
        }
        const std::string& name = ws.circuit.NodeLabels[NodeAt(ws, position)].Name;
        int superNode = 0;
        if (IsAnchorNode(eq, position, superNode)) {
            eq.EqnVars.push_back(EqnVar{static_cast<std::int16_t>(superNode),
                                        static_cast<std::int16_t>(position), name});
        } else if (IsNormalNode(ws, position)) {
            eq.EqnVars.push_back(EqnVar{0, static_cast<std::int16_t>(position), name});
        }
    }
    eq.NumUnknowns = static_cast<std::int16_t>(eq.EqnVars.size());
}

} // namespace

void GetSuperNodes(Workspace& ws) {
    ClearSuperNodes(ws);
    Equations& eq = ws.equations;
    const Topology& topology = ws.topology;
    std::array<bool, kMaxNodes + 1> grouped{};
    std::array<double, kMaxNodes + 1> offset{}; // voltage above the group's first node

    for (int first = 1; first <= ws.circuit.NumNodes; ++first) {
        if (grouped[first]) {
            continue;
        }
        grouped[first] = true;
        offset[first] = 0;
        std::vector<std::int16_t> members{static_cast<std::int16_t>(first)};
        std::vector<std::int16_t> chains;
        std::vector<WalkedChain> walked;
        for (std::size_t next = 0; next < members.size(); ++next) {
            const int from = members[next];
            for (int b = 1; b <= topology.NumBranches; ++b) {
                const Branch& chain = topology.Branches[b];
                if (!IsBatteryChain(chain) || chain.StartNode != NodeAt(ws, from)) {
                    continue;
                }
                if (chain.EndNode == chain.StartNode) {
                    // A battery shorted by its own wire, or a wire loop at one node.
                    throw chain.EMF != 0 ? AnalysisFailure::DifferentParallelVoltages
                                         : AnalysisFailure::CannotSolve;
                }
                chains.push_back(static_cast<std::int16_t>(b));
                const std::string pairName = ChainPairName(chain);
                const auto twin = std::find_if(walked.begin(), walked.end(), [&](const auto& w) {
                    return w.pairName == pairName;
                });
                if (twin != walked.end()) {
                    continue; // the same chain seen from its other end
                }
                const int to = ws.naming.NodeRank[chain.EndNode];
                const double reached = offset[from] + chain.EMF;
                const bool parallel = std::any_of(walked.begin(), walked.end(), [&](const auto& w) {
                    return (w.from == from && w.to == to) || (w.from == to && w.to == from);
                });
                walked.push_back(WalkedChain{pairName, from, to});
                if (!grouped[to]) {
                    grouped[to] = true;
                    offset[to] = reached;
                    members.push_back(static_cast<std::int16_t>(to));
                    continue;
                }
                // A second battery path to a member: its current cannot be told apart from
                // the first one's, or its voltage contradicts it.
                if (!SameVoltage(offset[to], reached)) {
                    throw AnalysisFailure::DifferentParallelVoltages;
                }
                throw parallel ? AnalysisFailure::IdenticalParallelBranches
                               : AnalysisFailure::CannotSolve;
            }
        }
        if (members.size() == 1) {
            continue;
        }
        SortAndPack(members, true);
        SortAndPack(chains, true);
        const int s = eq.NumSuperNodes + 1;
        eq.SuperNodes[s] = SuperNode{members, chains};
        eq.NumSuperNodes = static_cast<std::int16_t>(s);
        const int anchor = members.front();
        for (std::size_t m = 1; m < members.size(); ++m) {
            NodeLabel& node = ws.circuit.NodeLabels[NodeAt(ws, members[m])];
            node.AliasOffset = static_cast<float>(offset[members[m]] - offset[anchor]);
            const std::string constraint = SuperEqnString(ws, members[m], anchor, node.AliasOffset);
            node.Alias = constraint.substr(node.Name.size() + 1);
            eq.Constraints.push_back(BatteryConstraint{members[m], constraint});
        }
    }
    BuildEquationVariables(ws);
}

} // namespace ampora
