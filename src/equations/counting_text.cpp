#include "equations/counting_text.h"

#include "analysis/format_number.h"
#include "equations/supernode_queries.h"

namespace ampora {

namespace {

const std::string kParagraphEnd = "\r\n\r\n";

const EqnVar& Variable(const Workspace& ws, int number) {
    return ws.equations.EqnVars.at(static_cast<std::size_t>(number - 1));
}

std::string KindOfVariable(const Workspace& ws, int number) {
    return Variable(ws, number).SuperNode > 0 ? "supernode " : "node ";
}

std::string EliminationParagraph(const Workspace& ws) {
    const auto& constraints = ws.equations.Constraints;
    const int eliminated = static_cast<int>(constraints.size());
    std::string names;
    std::string facts;
    for (int k = eliminated; k >= 1; --k) {
        const BatteryConstraint& record = constraints[static_cast<std::size_t>(k - 1)];
        names += ws.circuit.NodeLabels[NodeAt(ws, record.Position)].Name + ", ";
        facts += ", " + record.Text;
    }
    facts.erase(0, 2);
    const std::string more = ws.naming.HasReference != 0 ? "more " : "";
    const std::string noun = eliminated == 1 ? "unknown, " : "unknowns, ";
    std::string text = "We can eliminate " + std::to_string(eliminated) + " " + more + noun +
                       names + "by using the fact that " + facts;
    if (ws.equations.NumSuperNodes == 1) {
        text += ".  Doing this creates an extended node or 'supernode'.  ";
    } else {
        text += ".  Doing this creates " + std::to_string(ws.equations.NumSuperNodes) +
                " extended nodes or 'supernodes'.  ";
    }
    return text +
           "(Supernodes are indicated in the circuit diagram by red lines connecting red "
           "dots)." +
           kParagraphEnd;
}

std::string ResultParagraph(const Workspace& ws) {
    const int n = ws.equations.NumUnknowns;
    if (n == 0) {
        return "The result is a circuit with no unknowns." + kParagraphEnd;
    }
    if (n == 1) {
        return "The result is a circuit with one unknown, " + Variable(ws, 1).VarName + "." +
               kParagraphEnd;
    }
    std::string names;
    for (int v = 1; v <= n; ++v) {
        names += (v > 1 ? ", " : "") + Variable(ws, v).VarName;
    }
    return "The result is a circuit with " + std::to_string(n) + " unknowns, " + names + "." +
           kParagraphEnd;
}

std::string EquationsParagraph(const Workspace& ws) {
    const int n = ws.equations.NumUnknowns;
    const bool batteries = !ws.equations.Constraints.empty();
    if (n == 1) {
        return "To solve for this unknown we need an equation, which we can get by applying "
               "Kirchhoff's Current Law at " +
               KindOfVariable(ws, 1) + Variable(ws, 1).VarName + "." + kParagraphEnd;
    }
    const std::string opening = "To solve for these unknowns we need " + std::to_string(n) +
                                " equations, which we can get by applying Kirchhoff's Current "
                                "Law at every ";
    if (ws.naming.HasReference != 0) {
        int superNode = 0;
        const std::string ref = IsAnchorNode(ws.equations, 1, superNode) ? "supernode" : "node";
        return opening + (batteries ? "node or supernode " : "node ") + "except the reference " +
               ref + "." + kParagraphEnd;
    }
    std::string text = opening + (batteries ? "node or supernode" : "node") +
                       ".  Note that these equations are redundant.  ";
    if (n != 2) {
        text += "  (This is always the case in nodal analysis because knowing how much current "
                "flows out the first " +
                std::to_string(n - 1) + " " + (batteries ? "nodes or supernodes" : "nodes") +
                " means that one automatically knows how much current flows into the last one.  ";
    } else {
        text += "  (This is always the case in nodal analysis because knowing how much current "
                "flows out the first " +
                std::string(batteries ? "node or supernode" : "node") +
                " means that one automatically knows how much current flows into the other "
                "one.  ";
    }
    return text +
           "The only consequence of the redundancy is that all the other voltages will "
           "have values that are relative to one voltage, and we can always set that one "
           "voltage to zero.)" +
           kParagraphEnd;
}

bool AnySuperNodeVariable(const Workspace& ws) {
    for (const EqnVar& var : ws.equations.EqnVars) {
        if (var.SuperNode > 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string LoadTextboxWithCounting(const Workspace& ws) {
    const int nodes = ws.circuit.NumNodes;
    const bool reference = ws.naming.HasReference != 0;
    const bool batteries = !ws.equations.Constraints.empty();
    std::string text =
        "In nodal analysis the quantities of interest (the unknowns to be solved for) are the "
        "voltages at the nodes (the red dots in the circuit diagram).  Once these voltages have "
        "been found anything else in the circuit (currents, powers, etc.) can be easily "
        "calculated." +
        kParagraphEnd;
    text += "This circuit contains " + std::to_string(nodes) + " nodes; hence there are " +
            std::to_string(nodes) + " unknowns." + kParagraphEnd;
    if (reference) {
        text += "We can eliminate one unknown by assigning one node a voltage of 0.  This node is "
                "called the reference node.  We are allowed to do this because voltage is a "
                "relative, not an absolute, quantity." +
                kParagraphEnd;
    }
    if (batteries) {
        text += EliminationParagraph(ws);
    }
    if (reference || batteries) {
        text += ResultParagraph(ws);
    }
    if (ws.equations.NumUnknowns >= 1) {
        text += EquationsParagraph(ws);
    }
    if (AnySuperNodeVariable(ws)) {
        text += "One final note: When writing down KCL for a supernode, we ignore currents "
                "flowing from node to node within the supernode; we only look at currents "
                "flowing out of the supernode as a whole." +
                kParagraphEnd;
    }
    return text;
}

std::array<std::string, 7> ChooseEqnText(const Workspace& ws, int sigFigs) {
    std::array<std::string, 7> text;
    const int n = ws.equations.NumUnknowns;
    if (n == 0) {
        text[0] = "There are no unknown nodal voltages and no equations.";
        return text;
    }
    if (n == 1) {
        const EqnVar& var = Variable(ws, 1);
        text[0] = "Applying Kirchhoff's current law at " + KindOfVariable(ws, 1) + var.VarName +
                  " results in this equation:";
        text[2] = "Collecting terms in the above equation then results in this equation:";
        text[3] = "Solving this equation gives  " + var.VarName + " = " +
                  FormatNumber(ws.circuit.NodeLabels[NodeAt(ws, var.Node)].Voltage, sigFigs);
        return text;
    }
    std::string list;
    for (int v = 1; v <= n; ++v) {
        list += KindOfVariable(ws, v) + Variable(ws, v).VarName + ", ";
    }
    text[0] = "Applying Kirchhoff's current law at " + list +
              "respectively, results in these "
              "equations:";
    text[2] = "Collecting terms in the above equations then results in these equations:";
    text[3] = "Converting fractions to decimal form and setting up the augmented matrix which "
              "describes this system of equations gives:";
    text[4] = "Carrying out Gauss-Jordan elimination reduces the augmented matrix to this reduced "
              "row echelon form (RREF):";
    text[5] = "Interpreting the RREF form gives the following solutions:";
    text[6] = "Notice that giving " + ws.circuit.NodeLabels[NodeAt(ws, ws.circuit.NumNodes)].Name +
              " a value, (say 0, thus making it the reference) makes it possible to then give "
              "values to the other variables.";
    return text;
}

} // namespace ampora
