#include "equations/supernodes.h"

#include "equations/chains_by_start.h"
#include "equations/supernode_queries.h"
#include "tables/analysis_failure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

namespace ampora {

namespace {

bool IsBatteryChain(const Branch& chain) {
    return !chain.CurrentName.empty();
}

// The name shared by a chain and its twin traced from the other end ("I3" and "-I3").
std::string_view ChainPairName(const Branch& chain) {
    const std::string_view name = chain.CurrentName;
    return name.substr(name.front() == '-' ? 1 : 0);
}

// Battery voltages are single-precision; their sums along two paths count as equal when
// they agree to that precision.
bool SameVoltage(double a, double b) {
    return std::fabs(a - b) <= 1e-6 * std::max({std::fabs(a), std::fabs(b), 1e-30});
}

struct WalkedChain {
    std::string_view pairName;
    int from = 0;
    int to = 0;
};

// A short list that lives on the stack while one group of nodes is walked; it throws
// rather than grow past its capacity.
template <typename T, std::size_t Capacity> struct StackList {
    std::array<T, Capacity> items{};
    std::size_t count = 0;
    void Add(const T& item) { items.at(count++) = item; }
    const T* begin() const { return items.data(); }
    const T* end() const { return items.data() + count; }
};

void ClearSuperNodes(Workspace& ws) {
    Equations& eq = ws.Equations;
    for (int s = 1; s <= kMaxSuperNodes; ++s) {
        eq.SuperNodes[s] = SuperNode{};
    }
    eq.NumSuperNodes = 0;
    eq.Constraints.clear();
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        ws.Circuit.NodeLabels[slot].Alias.clear();
        ws.Circuit.NodeLabels[slot].AliasOffset = 0;
    }
}

void BuildEquationVariables(Workspace& ws) {
    Equations& eq = ws.Equations;
    eq.EqnVars.clear();
    eq.EqnVars.reserve(static_cast<std::size_t>(std::max<int>(ws.Circuit.NumNodes, 0)));
    for (int position = 1; position <= ws.Circuit.NumNodes; ++position) {
        if (IsReferencePosition(ws, position)) {
            continue;
        }
        const std::string& name = ws.Circuit.NodeLabels[NodeAt(ws, position)].Name;
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

// Records the group as the next supernode and writes every member but the anchor through
// the anchor's voltage.
void AddSuperNode(Workspace& ws, std::vector<std::int16_t> members,
                  std::vector<std::int16_t> chains,
                  const std::array<double, kMaxNodes + 1>& offset) {
    Equations& eq = ws.Equations;
    SortAndPack(members, true);
    SortAndPack(chains, true);
    const int s = eq.NumSuperNodes + 1;
    eq.SuperNodes[s] = SuperNode{std::move(members), std::move(chains)};
    eq.NumSuperNodes = static_cast<std::int16_t>(s);
    const std::vector<std::int16_t>& nodes = eq.SuperNodes[s].Nodes;
    const int anchor = nodes.front();
    for (std::size_t m = 1; m < nodes.size(); ++m) {
        NodeLabel& node = ws.Circuit.NodeLabels[NodeAt(ws, nodes[m])];
        node.AliasOffset = static_cast<float>(offset.at(static_cast<std::size_t>(nodes[m])) -
                                              offset.at(static_cast<std::size_t>(anchor)));
        std::string constraint = SuperEqnString(ws, nodes[m], anchor, node.AliasOffset);
        node.Alias.assign(constraint, node.Name.size() + 1);
        eq.Constraints.push_back(BatteryConstraint{nodes[m], std::move(constraint)});
    }
}

} // namespace

void GetSuperNodes(Workspace& ws) {
    ClearSuperNodes(ws);
    const Topology& topology = ws.Topology;
    std::array<bool, kMaxNodes + 1> grouped{};
    std::array<double, kMaxNodes + 1> offset{}; // voltage above the group's first node
    // The group being walked: its nodes, the battery chains leaving them, and those chains
    // without their twins.
    StackList<std::int16_t, kMaxNodes + 1> members;
    StackList<std::int16_t, kMaxChains> chains;
    StackList<WalkedChain, kMaxChains> walked;

    for (int first = 1; first <= ws.Circuit.NumNodes; ++first) {
        if (grouped.at(static_cast<std::size_t>(first))) {
            continue;
        }
        grouped.at(static_cast<std::size_t>(first)) = true;
        offset.at(static_cast<std::size_t>(first)) = 0;
        members.count = 0;
        chains.count = 0;
        walked.count = 0;
        members.Add(static_cast<std::int16_t>(first));
        for (std::size_t next = 0; next < members.count; ++next) {
            const int from = members.items[next];
            const int fromSlot = NodeAt(ws, from);
            for (const int b : ChainsFrom(topology, fromSlot)) {
                const Branch& chain = topology.Branches[b];
                if (!IsBatteryChain(chain)) {
                    continue;
                }
                if (chain.EndNode == chain.StartNode) {
                    // A battery shorted by its own wire, or a wire loop at one node.
                    throw chain.EMF != 0 ? AnalysisFailure::DifferentParallelVoltages
                                         : AnalysisFailure::CannotSolve;
                }
                chains.Add(static_cast<std::int16_t>(b));
                const std::string_view pairName = ChainPairName(chain);
                const auto twin = std::find_if(walked.begin(), walked.end(), [&](const auto& w) {
                    return w.pairName == pairName;
                });
                if (twin != walked.end()) {
                    continue; // the same chain seen from its other end
                }
                const int to = ws.Naming.NodeRank[chain.EndNode];
                const double reached = offset.at(static_cast<std::size_t>(from)) + chain.EMF;
                const bool parallel = std::any_of(walked.begin(), walked.end(), [&](const auto& w) {
                    return (w.from == from && w.to == to) || (w.from == to && w.to == from);
                });
                walked.Add(WalkedChain{pairName, from, to});
                if (!grouped.at(static_cast<std::size_t>(to))) {
                    grouped.at(static_cast<std::size_t>(to)) = true;
                    offset.at(static_cast<std::size_t>(to)) = reached;
                    members.Add(static_cast<std::int16_t>(to));
                    continue;
                }
                // A second battery path to a member: its current cannot be told apart from
                // the first one's, or its voltage contradicts it.
                if (!SameVoltage(offset.at(static_cast<std::size_t>(to)), reached)) {
                    throw AnalysisFailure::DifferentParallelVoltages;
                }
                throw parallel ? AnalysisFailure::IdenticalParallelBranches
                               : AnalysisFailure::CannotSolve;
            }
        }
        if (members.count == 1) {
            continue;
        }
        AddSuperNode(ws, std::vector<std::int16_t>(members.begin(), members.end()),
                     std::vector<std::int16_t>(chains.begin(), chains.end()), offset);
    }
    BuildEquationVariables(ws);
}

} // namespace ampora
