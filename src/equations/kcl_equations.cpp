#include "equations/kcl_equations.h"

#include "document/number_text.h"
#include "equations/supernode_queries.h"

#include <array>
#include <cmath>
#include <string_view>
#include <vector>

namespace ampora {

namespace {

// The equations are written term by term into one string; numbers go straight into it.
void AppendNum(std::string& out, float value) {
    char text[32];
    out.append(text, WriteShortestText(text, text + sizeof text, value));
}

// A sign, a number and, when given, "/resistance" after it.
void AppendSigned(std::string& out, char sign, float value, std::string_view overR = {}) {
    out += sign;
    AppendNum(out, value);
    out.append(overR);
}

// Chain slots, at most one per slot of the chain table; kept on the stack, as every
// equation asks for them once per member node.
struct ChainList {
    std::array<int, kMaxChains> slots{};
    std::size_t count = 0;
    const int* begin() const { return slots.data(); }
    const int* end() const { return slots.data() + count; }
};

// The chains that leave the node at a position, in slot order. In a supernode's equation
// the chains that stay inside the supernode carry no current out of it and are left out.
ChainList ChainsLeaving(const Workspace& ws, int position, int superNode) {
    ChainList chains;
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
        chains.slots.at(chains.count++) = b; // Branches[b] above throws past the table
    }
    return chains;
}

const std::string& VoltageName(const NodeLabel& node) {
    return node.Alias.empty() ? node.Name : node.Alias;
}

// The chain's current out of its start node as a term of the equation: the source's
// current, or "(start-end±emf)/resistance"; joined to the terms before it by " + ", or by
// " - " in place of the term's own minus sign.
void AppendChainTerm(std::string& equation, const Workspace& ws, const Branch& chain) {
    if (chain.SourceCurrent != 0) {
        char text[32];
        std::string_view term(
            text, static_cast<std::size_t>(
                      WriteShortestText(text, text + sizeof text, chain.SourceCurrent) - text));
        if (!equation.empty()) {
            const bool minus = term.front() == '-';
            equation += minus ? " - " : " + ";
            term.remove_prefix(minus ? 1 : 0);
        }
        equation.append(term);
        return;
    }
    const NodeLabel& start = ws.circuit.NodeLabels[chain.StartNode];
    const NodeLabel& end = ws.circuit.NodeLabels[chain.EndNode];
    if (!equation.empty()) {
        equation += " + ";
    }
    equation += '(';
    equation += VoltageName(start);
    if (end.Alias.empty()) {
        equation += '-';
        equation += end.Name;
    } else {
        equation += NegAlias(end.Alias);
    }
    if (chain.EMF > 0) {
        AppendSigned(equation, '+', chain.EMF);
    } else if (chain.EMF < 0) {
        AppendSigned(equation, '-', std::fabs(chain.EMF));
    }
    equation += ")/";
    AppendNum(equation, chain.Resistance);
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
    equation.reserve(128);
    for (const int member : MemberPositions(ws, position, superNode)) {
        for (const int b : ChainsLeaving(ws, member, superNode)) {
            AppendChainTerm(equation, ws, ws.topology.Branches[b]);
        }
    }
    equation += " = 0";
    return equation;
}

std::string Collected(const Workspace& ws, int row, int position, int superNode) {
    const int n = ws.equations.NumUnknowns;
    std::vector<std::string> columns(static_cast<std::size_t>(n) + 1);
    std::string constant;
    constant.reserve(64);
    for (const int member : MemberPositions(ws, position, superNode)) {
        const NodeLabel& start = ws.circuit.NodeLabels[NodeAt(ws, member)];
        for (const int b : ChainsLeaving(ws, member, superNode)) {
            const Branch& chain = ws.topology.Branches[b];
            if (chain.SourceCurrent != 0) {
                const float i = chain.SourceCurrent;
                AppendSigned(constant, i < 0 ? '+' : '-', i < 0 ? std::fabs(i) : i);
                continue;
            }
            // "+1/R", whose tail "/R" also divides the constant terms.
            char conductanceText[40] = "+1/";
            const std::string_view conductance(
                conductanceText,
                static_cast<std::size_t>(WriteShortestText(conductanceText + 3,
                                                           conductanceText + sizeof conductanceText,
                                                           chain.Resistance) -
                                         conductanceText));
            const std::string_view overR = conductance.substr(2);
            columns[static_cast<std::size_t>(row)] += conductance;
            const int endVar = EqnVarWithNode(ws.equations, ws.naming.NodeRank[chain.EndNode]);
            if (endVar != 0) {
                columns[static_cast<std::size_t>(endVar)] += conductance;
            }
            // A member's own offset sits on the left; moved across it changes sign.
            if (!start.Alias.empty() && start.AliasOffset != 0) {
                const float k = start.AliasOffset;
                AppendSigned(constant, k > 0 ? '-' : '+', k > 0 ? k : std::fabs(k), overR);
            }
            const NodeLabel& end = ws.circuit.NodeLabels[chain.EndNode];
            if (!end.Alias.empty() && end.AliasOffset != 0) {
                const float k = end.AliasOffset;
                AppendSigned(constant, k < 0 ? '-' : '+', k < 0 ? std::fabs(k) : k, overR);
            }
            if (chain.EMF != 0) {
                const float e = chain.EMF;
                AppendSigned(constant, e < 0 ? '+' : '-', e < 0 ? std::fabs(e) : e, overR);
            }
        }
    }
    std::string left;
    for (int c = 1; c <= n; ++c) {
        const std::string& text = columns[static_cast<std::size_t>(c)];
        if (text.empty()) {
            continue;
        }
        left += c == row ? "+(" : "-(";
        left.append(text, 1);
        left += ")*";
        left += ws.equations.EqnVars[static_cast<std::size_t>(c - 1)].VarName;
    }
    if (!left.empty() && left.front() == '+') {
        left.erase(0, 1);
    }
    if (constant.empty()) {
        constant = "0";
    } else if (constant.front() == '+') {
        constant.erase(0, 1);
    }
    left += '=';
    left += constant;
    return left;
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
