#include "equations/kcl_equations.h"

#include "equations/chains_by_start.h"
#include "equations/exact_node_matrix.h"
#include "equations/supernode_queries.h"
#include "tables/number_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>

namespace ampora {

namespace {

// A chain's number (a sum of resistances or battery voltages, or a source's current) to
// the seven digits a single carries, perhaps after a prefix, written once for the several
// forms that show it. Only the characters up to `size` are ever written or read.
struct NumberText {
    std::array<char, 40> chars;
    std::uint8_t size = 0;
    std::string_view View() const { return {chars.data(), size}; }
};

void WriteNumber(NumberText& text, std::string_view prefix, float value) {
    char* const first = text.chars.data();
    char* const number = first + prefix.copy(first, prefix.size());
    text.size = static_cast<std::uint8_t>(
        WriteSingleText(number, first + text.chars.size(), value) - first);
}

constexpr std::string_view kConductancePrefix = "+1/";

// One chain of an equation, with what its terms in every form need.
struct Term {
    const Branch* chain = nullptr;
    const NodeLabel* start = nullptr;
    const NodeLabel* end = nullptr; // only for a chain without a current source
    int endVariable = 0;            // the variable carrying the end node, 0 for none
    // The source's current; or else "+1/R", whose tail "/R" also divides the constants.
    NumberText number;
    NumberText emfSize; // the EMF without its sign, when there is one

    bool IsSource() const { return chain->SourceCurrent != 0; }
    std::string_view Conductance() const { return number.View(); }
    std::string_view OverR() const { return number.View().substr(2); }
    std::string_view Resistance() const { return number.View().substr(3); }
};

using Terms = std::array<Term, kMaxChains>;

// True for a chain that joins two members of the supernode: it carries no current out.
bool StaysInside(const Workspace& ws, int chainSlot, int superNode) {
    const int endPosition = ws.Naming.NodeRank[ws.Topology.Branches[chainSlot].EndNode];
    return IsBranchOfSN(ws.Equations, chainSlot, superNode) ||
           IsOnList(static_cast<std::int16_t>(endPosition),
                    ws.Equations.SuperNodes[superNode].Nodes);
}

// The chains that carry current out of the variable's node, member by member for a
// supernode, each node's chains in slot order: the order in which every form lists them.
// A chain that returns to its own node carries nothing out of it, and in a supernode's
// equation the chains that stay inside the supernode are left out too.
std::span<const Term> GatherTerms(const Workspace& ws, const EqnVar& var, Terms& terms) {
    const std::span<const std::int16_t> members =
        var.SuperNode > 0
            ? std::span<const std::int16_t>(ws.Equations.SuperNodes[var.SuperNode].Nodes)
            : std::span<const std::int16_t>(&var.Node, 1);
    std::size_t count = 0;
    for (const int member : members) {
        const int slot = NodeAt(ws, member);
        for (const int b : ChainsFrom(ws.Topology, slot)) {
            const Branch& chain = ws.Topology.Branches[b];
            if (chain.EndNode == slot) {
                continue;
            }
            if (var.SuperNode > 0 && StaysInside(ws, b, var.SuperNode)) {
                continue;
            }
            Term& term = terms.at(count++);
            term.chain = &chain;
            term.start = &ws.Circuit.NodeLabels[slot];
            term.end = nullptr;
            term.endVariable = 0;
            term.emfSize.size = 0;
            if (chain.SourceCurrent != 0) {
                WriteNumber(term.number, {}, chain.SourceCurrent);
                continue;
            }
            term.end = &ws.Circuit.NodeLabels[chain.EndNode];
            term.endVariable = EqnVarWithNode(ws.Equations, ws.Naming.NodeRank[chain.EndNode]);
            WriteNumber(term.number, kConductancePrefix, chain.Resistance);
            if (chain.EMF != 0) {
                WriteNumber(term.emfSize, {}, chain.EMF < 0 ? std::fabs(chain.EMF) : chain.EMF);
            }
        }
    }
    return std::span<const Term>(terms.data(), count);
}

const std::string& VoltageName(const NodeLabel& node) {
    return node.Alias.empty() ? node.Name : node.Alias;
}

void AppendNum(std::string& out, float value) {
    char text[32];
    out.append(text, WriteSingleText(text, text + sizeof text, value));
}

// Each chain's current out of its start node: the source's current, or
// "(start-end±emf)/resistance"; joined to the terms before it by " + ", or by " - " in
// place of the term's own minus sign.
std::string FirstWritten(std::span<const Term> terms) {
    std::string equation;
    equation.reserve(8 + 24 * terms.size());
    for (const Term& term : terms) {
        if (term.IsSource()) {
            std::string_view current = term.number.View();
            if (!equation.empty()) {
                const bool minus = current.front() == '-';
                equation += minus ? " - " : " + ";
                current.remove_prefix(minus ? 1 : 0);
            }
            equation.append(current);
            continue;
        }
        equation += equation.empty() ? "(" : " + (";
        equation += VoltageName(*term.start);
        if (term.end->Alias.empty()) {
            equation += '-';
            equation += term.end->Name;
        } else {
            AppendNegAlias(equation, term.end->Alias);
        }
        const float emf = term.chain->EMF;
        if (emf > 0 || emf < 0) {
            equation += emf > 0 ? '+' : '-';
            equation.append(term.emfSize.View());
        }
        equation += ")/";
        equation.append(term.Resistance());
    }
    equation += " = 0";
    return equation;
}

// "1/R" of each chain that puts the variable in `column` into the equation of `row`,
// joined by '+'.
void AppendConductances(std::string& out, std::span<const Term> terms, int row, int column) {
    bool first = true;
    for (const Term& term : terms) {
        if (term.IsSource()) {
            continue;
        }
        // A chain counts once for its own node and once more for the variable at its end.
        const int times = (column == row ? 1 : 0) + (term.endVariable == column ? 1 : 0);
        for (int k = 0; k < times; ++k) {
            out.append(term.Conductance().substr(first ? 1 : 0));
            first = false;
        }
    }
}

// The constants moved to the right: the source currents, the offsets of aliased members
// and the EMFs, each of the last two over its chain's resistance. The first one shows no
// '+'; with none at all the right side is 0.
void AppendConstants(std::string& out, std::span<const Term> terms) {
    bool first = true;
    const auto sign = [&](char c) {
        if (!first || c != '+') {
            out += c;
        }
        first = false;
    };
    for (const Term& term : terms) {
        const Branch& chain = *term.chain;
        if (term.IsSource()) {
            const std::string_view current = term.number.View();
            sign(chain.SourceCurrent < 0 ? '+' : '-');
            out.append(chain.SourceCurrent < 0 ? current.substr(1) : current);
            continue;
        }
        // A member's own offset sits on the left; moved across it changes sign.
        const NodeLabel& start = *term.start;
        if (!start.Alias.empty() && start.AliasOffset != 0) {
            const float k = start.AliasOffset;
            sign(k > 0 ? '-' : '+');
            AppendNum(out, k > 0 ? k : std::fabs(k));
            out.append(term.OverR());
        }
        const NodeLabel& end = *term.end;
        if (!end.Alias.empty() && end.AliasOffset != 0) {
            const float k = end.AliasOffset;
            sign(k < 0 ? '-' : '+');
            AppendNum(out, k < 0 ? std::fabs(k) : k);
            out.append(term.OverR());
        }
        if (chain.EMF != 0) {
            sign(chain.EMF < 0 ? '+' : '-');
            out.append(term.emfSize.View());
            out.append(term.OverR());
        }
    }
    if (first) {
        out += '0';
    }
}

// True when the unknown in `column` is in the equation of `row`: its own, and the variable
// at the end of each of its chains, for the chains without a current source.
bool UsesColumn(std::span<const Term> terms, int row, int column) {
    return std::any_of(terms.begin(), terms.end(), [&](const Term& term) {
        return !term.IsSource() && (column == row || term.endVariable == column);
    });
}

// The unknowns on the left, each with the sum of its conductances, "=", the constants.
std::string Collected(const Workspace& ws, int row, std::span<const Term> terms) {
    const int n = ws.Equations.NumUnknowns;
    std::string equation;
    equation.reserve(16 + 16 * static_cast<std::size_t>(n) + 24 * terms.size());
    for (int column = 1; column <= std::min(n, kMaxUnknowns); ++column) {
        if (!UsesColumn(terms, row, column)) {
            continue;
        }
        if (column != row) {
            equation += "-(";
        } else {
            equation += equation.empty() ? "(" : "+(";
        }
        AppendConductances(equation, terms, row, column);
        equation += ")*";
        equation += ws.Equations.EqnVars[static_cast<std::size_t>(column - 1)].VarName;
    }
    equation += '=';
    AppendConstants(equation, terms);
    return equation;
}

// Adds the row's numbers into `matrix`, each chain number taken through `value`: the
// single itself for the decimal matrix, the exact value of its text for the fractions.
template <typename Cells, typename Value>
void LoadRow(const Workspace& ws, Cells& matrix, int row, std::span<const Term> terms,
             Value value) {
    using Number = decltype(value(0.0f));
    const int rhs = ws.Equations.NumUnknowns + 1;
    for (const Term& term : terms) {
        const Branch& chain = *term.chain;
        if (term.IsSource()) {
            matrix(row, rhs) -= value(chain.SourceCurrent);
            continue;
        }
        const Number r = value(chain.Resistance);
        matrix(row, row) += Number(1) / r;
        if (term.endVariable != 0) {
            matrix(row, term.endVariable) -= Number(1) / r;
        }
        if (!term.start->Alias.empty()) {
            matrix(row, rhs) -= value(term.start->AliasOffset) / r;
        }
        if (!term.end->Alias.empty()) {
            matrix(row, rhs) += value(term.end->AliasOffset) / r;
        }
        matrix(row, rhs) -= value(chain.EMF) / r;
    }
}

double SingleValue(float value) {
    return value;
}

// The value a chain number stands for in the equations: that of the text they show.
struct ShownValue {
    bool* exact;
    Rational operator()(float value) const {
        std::optional<Rational> shown = RationalFromDecimal(SingleText(value));
        if (!shown) {
            *exact = false;
            return Rational(0);
        }
        return *shown;
    }
};

} // namespace

void WriteNodeEquations(Workspace& ws) {
    Equations& eq = ws.Equations;
    ws.Matrix.cells.fill(0);
    eq.FirstWritten.clear();
    eq.Collected.clear();
    const int n = eq.NumUnknowns;
    eq.FirstWritten.reserve(static_cast<std::size_t>(std::max(n, 0)));
    eq.Collected.reserve(static_cast<std::size_t>(std::max(n, 0)));
    Terms terms;
    for (int row = 1; row <= n; ++row) {
        const EqnVar& var = eq.EqnVars[static_cast<std::size_t>(row - 1)];
        const std::span<const Term> rowTerms = GatherTerms(ws, var, terms);
        eq.FirstWritten.push_back(FirstWritten(rowTerms));
        LoadRow(ws, ws.Matrix, row, rowTerms, SingleValue);
        eq.Collected.push_back(Collected(ws, row, rowTerms));
    }
}

std::optional<ExactMatrix> ExactNodeMatrix(const Workspace& ws) {
    const Equations& eq = ws.Equations;
    const int n = eq.NumUnknowns;
    if (n <= 0 || n > kMaxUnknowns || eq.EqnVars.size() != static_cast<std::size_t>(n)) {
        return std::nullopt;
    }
    ExactMatrix matrix(n, n);
    bool exact = true;
    Terms terms;
    for (int row = 1; row <= n; ++row) {
        const EqnVar& var = eq.EqnVars[static_cast<std::size_t>(row - 1)];
        LoadRow(ws, matrix, row, GatherTerms(ws, var, terms), ShownValue{&exact});
    }
    if (!exact) {
        return std::nullopt;
    }
    return matrix;
}

} // namespace ampora
