#include "equations/counting_text.h"

#include "analysis/format_number.h"
#include "equations/node_voltages.h"
#include "equations/supernode_queries.h"

#include <charconv>
#include <string_view>

namespace ampora {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kParagraphEnd = "\r\n\r\n";

// The prose is put together piece by piece at the end of one string, without the
// temporaries that joining its pieces with '+' would make.
template <typename... Pieces> void Append(std::string& text, const Pieces&... pieces) {
    (text.append(std::string_view(pieces)), ...);
}

void AppendCount(std::string& text, int count) {
    char digits[16];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, count).ptr);
}

const EqnVar& Variable(const Workspace& ws, int number) {
    return ws.Equations.EqnVars.at(static_cast<std::size_t>(number - 1));
}

std::string_view KindOfVariable(const Workspace& ws, int number) {
    return Variable(ws, number).SuperNode > 0 ? "supernode "sv : "node "sv;
}

void AppendElimination(std::string& text, const Workspace& ws) {
    const auto& constraints = ws.Equations.Constraints;
    const int eliminated = static_cast<int>(constraints.size());
    Append(text, "We can eliminate "sv);
    AppendCount(text, eliminated);
    Append(text, " "sv, ws.Naming.HasReference != 0 ? "more "sv : ""sv,
           eliminated == 1 ? "unknown, "sv : "unknowns, "sv);
    for (int k = eliminated; k >= 1; --k) {
        const BatteryConstraint& record = constraints[static_cast<std::size_t>(k - 1)];
        Append(text, ws.Circuit.NodeLabels[NodeAt(ws, record.Position)].Name, ", "sv);
    }
    Append(text, "by using the fact that "sv);
    for (int k = eliminated; k >= 1; --k) {
        Append(text, k < eliminated ? ", "sv : ""sv,
               constraints[static_cast<std::size_t>(k - 1)].Text);
    }
    if (ws.Equations.NumSuperNodes == 1) {
        Append(text, ".  Doing this creates an extended node or 'supernode'.  "sv);
    } else {
        Append(text, ".  Doing this creates "sv);
        AppendCount(text, ws.Equations.NumSuperNodes);
        Append(text, " extended nodes or 'supernodes'.  "sv);
    }
    Append(text,
           "(Supernodes are indicated in the circuit diagram by red lines connecting red "
           "dots)."sv,
           kParagraphEnd);
}

void AppendResult(std::string& text, const Workspace& ws) {
    const int n = ws.Equations.NumUnknowns;
    if (n == 0) {
        Append(text, "The result is a circuit with no unknowns."sv, kParagraphEnd);
        return;
    }
    if (n == 1) {
        Append(text, "The result is a circuit with one unknown, "sv, Variable(ws, 1).VarName, "."sv,
               kParagraphEnd);
        return;
    }
    Append(text, "The result is a circuit with "sv);
    AppendCount(text, n);
    Append(text, " unknowns, "sv);
    for (int v = 1; v <= n; ++v) {
        Append(text, v > 1 ? ", "sv : ""sv, Variable(ws, v).VarName);
    }
    Append(text, "."sv, kParagraphEnd);
}

void AppendEquations(std::string& text, const Workspace& ws) {
    const int n = ws.Equations.NumUnknowns;
    const bool batteries = !ws.Equations.Constraints.empty();
    if (n == 1) {
        Append(text,
               "To solve for this unknown we need an equation, which we can get by applying "
               "Kirchhoff's Current Law at "sv,
               KindOfVariable(ws, 1), Variable(ws, 1).VarName, "."sv, kParagraphEnd);
        return;
    }
    Append(text, "To solve for these unknowns we need "sv);
    AppendCount(text, n);
    Append(text, " equations, which we can get by applying Kirchhoff's Current Law at every "sv);
    if (ws.Naming.HasReference != 0) {
        int superNode = 0;
        const bool superReference = IsAnchorNode(ws.Equations, 1, superNode);
        Append(text, batteries ? "node or supernode "sv : "node "sv, "except the reference "sv,
               superReference ? "supernode"sv : "node"sv, "."sv, kParagraphEnd);
        return;
    }
    Append(text, batteries ? "node or supernode"sv : "node"sv,
           ".  Note that these equations are redundant.  "sv);
    if (n != 2) {
        Append(text,
               "  (This is always the case in nodal analysis because knowing how much current "
               "flows out the first "sv);
        AppendCount(text, n - 1);
        Append(text, " "sv, batteries ? "nodes or supernodes"sv : "nodes"sv,
               " means that one automatically knows how much current flows into the last one.  "sv);
    } else {
        Append(text,
               "  (This is always the case in nodal analysis because knowing how much current "
               "flows out the first "sv,
               batteries ? "node or supernode"sv : "node"sv,
               " means that one automatically knows how much current flows into the other "
               "one.  "sv);
    }
    Append(text,
           "The only consequence of the redundancy is that all the other voltages will "
           "have values that are relative to one voltage, and we can always set that one "
           "voltage to zero.)"sv,
           kParagraphEnd);
}

bool AnySuperNodeVariable(const Workspace& ws) {
    for (const EqnVar& var : ws.Equations.EqnVars) {
        if (var.SuperNode > 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string LoadTextboxWithCounting(const Workspace& ws) {
    const int nodes = ws.Circuit.NumNodes;
    const bool reference = ws.Naming.HasReference != 0;
    const bool batteries = !ws.Equations.Constraints.empty();
    std::string text;
    text.reserve(2048);
    Append(text,
           "In nodal analysis the quantities of interest (the unknowns to be solved for) are the "
           "voltages at the nodes (the red dots in the circuit diagram).  Once these voltages "
           "have been found anything else in the circuit (currents, powers, etc.) can be easily "
           "calculated."sv,
           kParagraphEnd, "This circuit contains "sv);
    AppendCount(text, nodes);
    Append(text, " nodes; hence there are "sv);
    AppendCount(text, nodes);
    Append(text, " unknowns."sv, kParagraphEnd);
    if (reference) {
        Append(text,
               "We can eliminate one unknown by assigning one node a voltage of 0.  This node is "
               "called the reference node.  We are allowed to do this because voltage is a "
               "relative, not an absolute, quantity."sv,
               kParagraphEnd);
    }
    if (batteries) {
        AppendElimination(text, ws);
    }
    if (reference || batteries) {
        AppendResult(text, ws);
    }
    if (ws.Equations.NumUnknowns >= 1) {
        AppendEquations(text, ws);
    }
    if (AnySuperNodeVariable(ws)) {
        Append(text,
               "One final note: When writing down KCL for a supernode, we ignore currents "
               "flowing from node to node within the supernode; we only look at currents "
               "flowing out of the supernode as a whole."sv,
               kParagraphEnd);
    }
    return text;
}

std::array<std::string, 7> ChooseEqnText(const Workspace& ws, int sigFigs) {
    std::array<std::string, 7> text;
    const int n = ws.Equations.NumUnknowns;
    if (n == 0) {
        text[0] = "There are no unknown nodal voltages and no equations.";
        return text;
    }
    if (n == 1) {
        const EqnVar& var = Variable(ws, 1);
        Append(text[0], "Applying Kirchhoff's current law at "sv, KindOfVariable(ws, 1),
               var.VarName, " results in this equation:"sv);
        text[2] = "Collecting terms in the above equation then results in this equation:";
        Append(text[3], "Solving this equation gives  "sv, var.VarName, " = "sv,
               FormatNumber(ws.Circuit.NodeLabels[NodeAt(ws, var.Node)].Voltage, sigFigs));
        return text;
    }
    text[0].reserve(96 + 16 * static_cast<std::size_t>(n));
    Append(text[0], "Applying Kirchhoff's current law at "sv);
    for (int v = 1; v <= n; ++v) {
        Append(text[0], KindOfVariable(ws, v), Variable(ws, v).VarName, ", "sv);
    }
    Append(text[0], "respectively, results in these equations:"sv);
    text[2] = "Collecting terms in the above equations then results in these equations:";
    text[3] = "Converting fractions to decimal form and setting up the augmented matrix which "
              "describes this system of equations gives:";
    text[4] = "Carrying out Gauss-Jordan elimination reduces the augmented matrix to this reduced "
              "row echelon form (RREF):";
    text[5] = "Interpreting the RREF form gives the following solutions:";
    // With a reference chosen every voltage is already fixed; without one, the note names
    // the node that the solution below sets to 0.
    if (const int zero = ZeroVariable(ws); zero != 0) {
        Append(text[6], "Notice that giving "sv,
               ws.Circuit.NodeLabels[NodeAt(ws, Variable(ws, zero).Node)].Name,
               " a value, (say 0, thus making it the reference) makes it possible to then give "
               "values to the other variables."sv);
    }
    return text;
}

} // namespace ampora
