#include "equations/kcl_equations.h"

#include "document/number_text.h"
#include "equations/supernode_queries.h"

#include <cmath>
#include <vector>

namespace ampora {

namespace {

std::string Num(float value) {
    return ShortestText(value);
}

// The chains that leave the node at a position, in slot order. In a supernode's equation
// the chains that stay inside the supernode carry no current out of it and are left out.
std::vector<int> ChainsLeaving(const Workspace& ws, int position, int superNode) {
    std::vector<int> chains;
    const int slot = NodeAt(ws, position);
    for (int b = 1; b <= ws.topology.NumBranches; ++b) {
        const Branch& chain = ws.topology.Branches[b];
        // A chain that returns to its own node carries nothing out of it.
        if (chain.StartNode != slot || chain.EndNode == slot) {
            continue;
        }
        if (superNode > 0) {
            const auto& members = ws.equations.SuperNodes[superNode].Nodes;
            if (IsBranchOfSN(ws.equations, b, superNode) ||
                IsOnList(ws.naming.NodeRank[chain.EndNode], members)) {
                continue;
            }
        }
        chains.push_back(b);
    }
    return chains;
}

std::string VoltageName(const NodeLabel& node) {
    return node.Alias.empty() ? node.Name : node.Alias;
}

std::string ChainTerm(const Workspace& ws, const Branch& chain) {
    if (chain.SourceCurrent != 0) {
        return Num(chain.SourceCurrent);
    }
    const NodeLabel& start = ws.circuit.NodeLabels[chain.StartNode];
    const NodeLabel& end = ws.circuit.NodeLabels[chain.EndNode];
    std::string numerator = VoltageName(start);
    numerator += end.Alias.empty() ? "-" + end.Name : NegAlias(end.Alias);
    if (chain.EMF > 0) {
        numerator += "+" + Num(chain.EMF);
    } else if (chain.EMF < 0) {
        numerator += "-" + Num(std::fabs(chain.EMF));
    }
    return "(" + numerator + ")/" + Num(chain.Resistance);
}

void AppendTerm(std::string& equation, const std::string& term) {
    if (equation.empty()) {
        equation = term;
    } else if (term.front() == '-') {
        equation += " - " + term.substr(1);
    } else {
        equation += " + " + term;
    }
}

std::vector<int> MemberPositions(const Workspace& ws, int position, int superNode) {
    if (superNode == 0) {
        return {position};
    }
    const auto& nodes = ws.equations.SuperNodes[superNode].Nodes;
    return std::vector<int>(nodes.begin(), nodes.end());
}

std::string FirstWritten(const Workspace& ws, int position, int superNode) {
    std::string equation;
    for (const int member : MemberPositions(ws, position, superNode)) {
        for (const int b : ChainsLeaving(ws, member, superNode)) {
            AppendTerm(equation, ChainTerm(ws, ws.topology.Branches[b]));
        }
    }
    return equation + " = 0";
}

std::string Collected(const Workspace& ws, int row, int position, int superNode) {
    const int n = ws.equations.NumUnknowns;
    std::vector<std::string> columns(static_cast<std::size_t>(n) + 1);
    std::string constant;
    for (const int member : MemberPositions(ws, position, superNode)) {
        const NodeLabel& start = ws.circuit.NodeLabels[NodeAt(ws, member)];
        for (const int b : ChainsLeaving(ws, member, superNode)) {
            const Branch& chain = ws.topology.Branches[b];
            if (chain.SourceCurrent != 0) {
                const float i = chain.SourceCurrent;
                constant += i < 0 ? "+" + Num(std::fabs(i)) : "-" + Num(i);
                continue;
            }
            const std::string conductance = "+1/" + Num(chain.Resistance);
            columns[static_cast<std::size_t>(row)] += conductance;
            const int endVar = EqnVarWithNode(ws.equations, ws.naming.NodeRank[chain.EndNode]);
            if (endVar != 0) {
                columns[static_cast<std::size_t>(endVar)] += conductance;
            }
            const std::string overR = "/" + Num(chain.Resistance);
            // A member's own offset sits on the left; moved across it changes sign.
            if (!start.Alias.empty() && start.AliasOffset != 0) {
                const float k = start.AliasOffset;
                constant += k > 0 ? "-" + Num(k) + overR : "+" + Num(std::fabs(k)) + overR;
            }
            const NodeLabel& end = ws.circuit.NodeLabels[chain.EndNode];
            if (!end.Alias.empty() && end.AliasOffset != 0) {
                const float k = end.AliasOffset;
                constant += k < 0 ? "-" + Num(std::fabs(k)) + overR : "+" + Num(k) + overR;
            }
            if (chain.EMF != 0) {
                const float e = chain.EMF;
                constant += e < 0 ? "+" + Num(std::fabs(e)) + overR : "-" + Num(e) + overR;
            }
        }
    }
    std::string left;
    for (int c = 1; c <= n; ++c) {
        const std::string& text = columns[static_cast<std::size_t>(c)];
        if (text.empty()) {
            continue;
        }
        left += (c == row ? "+" : "-") + ("(" + text.substr(1) + ")*") +
                ws.equations.EqnVars[static_cast<std::size_t>(c - 1)].VarName;
    }
    if (!left.empty() && left.front() == '+') {
        left.erase(0, 1);
    }
    if (constant.empty()) {
        constant = "0";
    } else if (constant.front() == '+') {
        constant.erase(0, 1);
    }
    return left + "=" + constant;
}

void LoadRow(const Workspace& ws, AugmentedMatrix& matrix, int row, int position, int superNode) {
    const int rhs = ws.equations.NumUnknowns + 1;
    for (const int member : MemberPositions(ws, position, superNode)) {
        const NodeLabel& start = ws.circuit.NodeLabels[NodeAt(ws, member)];
        for (const int b : ChainsLeaving(ws, member, superNode)) {
            const Branch& chain = ws.topology.Branches[b];
            if (chain.SourceCurrent != 0) {
                matrix(row, rhs) -= chain.SourceCurrent;
                continue;
            }
            const double r = chain.Resistance;
            matrix(row, row) += 1 / r;
            const int endVar = EqnVarWithNode(ws.equations, ws.naming.NodeRank[chain.EndNode]);
            if (endVar != 0) {
                matrix(row, endVar) -= 1 / r;
            }
            if (!start.Alias.empty()) {
                matrix(row, rhs) -= start.AliasOffset / r;
            }
            const NodeLabel& end = ws.circuit.NodeLabels[chain.EndNode];
            if (!end.Alias.empty()) {
                matrix(row, rhs) += end.AliasOffset / r;
            }
            matrix(row, rhs) -= chain.EMF / r;
        }
    }
}

} // namespace

std::string EqnSet1Normal(const Workspace& ws, int position) {
    return FirstWritten(ws, position, 0);
}

std::string EqnSet1Super(const Workspace& ws, int superNode) {
    return FirstWritten(ws, 0, superNode);
}

std::string EqnSet2Normal(const Workspace& ws, int row, int position) {
    return Collected(ws, row, position, 0);
}

std::string EqnSet2Super(const Workspace& ws, int row, int superNode) {
    return Collected(ws, row, 0, superNode);
}

void LoadMatrixNormal(const Workspace& ws, AugmentedMatrix& matrix, int row, int position) {
    LoadRow(ws, matrix, row, position, 0);
}

void LoadMatrixSuper(const Workspace& ws, AugmentedMatrix& matrix, int row, int superNode) {
    LoadRow(ws, matrix, row, 0, superNode);
}

void EqnSet1(Workspace& ws) {
    ws.Matrix.cells.fill(0);
    ws.equations.FirstWritten.clear();
    for (int row = 1; row <= ws.equations.NumUnknowns; ++row) {
        const EqnVar& var = ws.equations.EqnVars[static_cast<std::size_t>(row - 1)];
        if (var.SuperNode > 0) {
            ws.equations.FirstWritten.push_back(EqnSet1Super(ws, var.SuperNode));
            LoadMatrixSuper(ws, ws.Matrix, row, var.SuperNode);
        } else {
            ws.equations.FirstWritten.push_back(EqnSet1Normal(ws, var.Node));
            LoadMatrixNormal(ws, ws.Matrix, row, var.Node);
        }
    }
}

void EqnSet2(Workspace& ws) {
    ws.equations.Collected.clear();
    for (int row = 1; row <= ws.equations.NumUnknowns; ++row) {
        const EqnVar& var = ws.equations.EqnVars[static_cast<std::size_t>(row - 1)];
        ws.equations.Collected.push_back(var.SuperNode > 0 ? EqnSet2Super(ws, row, var.SuperNode)
                                                           : EqnSet2Normal(ws, row, var.Node));
    }
}

} // namespace ampora
