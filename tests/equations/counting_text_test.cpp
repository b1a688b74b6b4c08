#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "support/solve_session.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::ExampleText;
using test::SolveSession;

const std::string kOpening =
    "In nodal analysis the quantities of interest (the unknowns to be solved for) are the "
    "voltages at the nodes (the red dots in the circuit diagram).  Once these voltages have been "
    "found anything else in the circuit (currents, powers, etc.) can be easily "
    "calculated.\r\n\r\n";
const std::string kReference =
    "We can eliminate one unknown by assigning one node a voltage of 0.  This node is called the "
    "reference node.  We are allowed to do this because voltage is a relative, not an absolute, "
    "quantity.\r\n\r\n";
const std::string kRedundancyEnd =
    "The only consequence of the redundancy is that all the other voltages will have values that "
    "are relative to one voltage, and we can always set that one voltage to zero.)\r\n\r\n";
const std::string kFinalNote =
    "One final note: When writing down KCL for a supernode, we ignore currents flowing from node "
    "to node within the supernode; we only look at currents flowing out of the supernode as a "
    "whole.\r\n\r\n";

SolveSession Solved(const std::string& text, int autoName) {
    SolveSession session;
    test::Solve(session, text, autoName);
    EXPECT_TRUE(session.solved) << (session.prompts.messages.empty() ? ""
                                                                     : session.prompts.messages[0]);
    return session;
}

std::string Captions(const Workspace& ws) {
    std::string text;
    for (const std::string& caption : ws.equations.EqnText) {
        text += caption + "|\n";
    }
    return text;
}

TEST(CountingText, OneOrdinaryUnknownWithAReference) {
    const SolveSession s = Solved(ExampleText("voltage_divider.amq"), 1);
    EXPECT_EQ(s.ws.equations.CountingText,
              kOpening + "This circuit contains 2 nodes; hence there are 2 unknowns.\r\n\r\n" +
                  kReference + "The result is a circuit with one unknown, V1.\r\n\r\n" +
                  "To solve for this unknown we need an equation, which we can get by applying "
                  "Kirchhoff's Current Law at node V1.\r\n\r\n");
    EXPECT_EQ(Captions(s.ws), "Applying Kirchhoff's current law at node V1 results in this "
                              "equation:|\n|\n"
                              "Collecting terms in the above equation then results in this "
                              "equation:|\n"
                              "Solving this equation gives  V1 = 6|\n|\n|\n|\n");
}

TEST(CountingText, OneSupernodeUnknownNamesTheBatteryConstraint) {
    const SolveSession s = Solved(ExampleText("supernode.amq"), 1);
    EXPECT_EQ(s.ws.equations.CountingText,
              kOpening + "This circuit contains 3 nodes; hence there are 3 unknowns.\r\n\r\n" +
                  kReference +
                  "We can eliminate 1 more unknown, V2, by using the fact that V2=V1+6.  Doing "
                  "this creates an extended node or 'supernode'.  (Supernodes are indicated in "
                  "the circuit diagram by red lines connecting red dots).\r\n\r\n" +
                  "The result is a circuit with one unknown, V1.\r\n\r\n" +
                  "To solve for this unknown we need an equation, which we can get by applying "
                  "Kirchhoff's Current Law at supernode V1.\r\n\r\n" +
                  kFinalNote);
    EXPECT_EQ(s.ws.equations.EqnText[0],
              "Applying Kirchhoff's current law at supernode V1 results in this equation:");
}

TEST(CountingText, SeveralSupernodesListTheirConstraintsLastFirst) {
    const SolveSession s = Solved(ExampleText("two_supernodes.amq"), 1);
    const std::string& text = s.ws.equations.CountingText;
    EXPECT_NE(text.find("We can eliminate 2 more unknowns, V5, V4, by using the fact that "
                        "V5=V3+5, V4=V1-10.  Doing this creates 2 extended nodes or "
                        "'supernodes'.  (Supernodes"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("The result is a circuit with 3 unknowns, V1, V2, V3.\r\n\r\nTo solve "
                        "for these unknowns we need 3 equations, which we can get by applying "
                        "Kirchhoff's Current Law at every node or supernode except the reference "
                        "node.\r\n\r\n" +
                        kFinalNote),
              std::string::npos)
        << text;
    EXPECT_EQ(Captions(s.ws),
              "Applying Kirchhoff's current law at supernode V1, node V2, supernode V3, "
              "respectively, results in these equations:|\n|\n"
              "Collecting terms in the above equations then results in these equations:|\n"
              "Converting fractions to decimal form and setting up the augmented matrix which "
              "describes this system of equations gives:|\n"
              "Carrying out Gauss-Jordan elimination reduces the augmented matrix to this reduced "
              "row echelon form (RREF):|\n"
              "Interpreting the RREF form gives the following solutions:|\n|\n");
}

// The closing note on giving a node the value 0 belongs to circuits without a reference,
// and names the node that the solution does set to 0, also when the node last in order is
// a supernode member whose voltage follows its anchor's.
TEST(CountingText, TheNoteOnAZeroNodeNamesTheNodeTheSolutionSetsToZero) {
    struct Case {
        const char* example;
        const char* reference; // renamed, to leave the circuit without a reference
        const char* renamed;
        int autoName;
    };
    const Case cases[] = {
        {"two_supernodes.amq", "", "", 1},
        {"wheatstone_bridge.amq", "", "", 1},
        {"voltage_divider.amq", "\"0\"", "\"Z\"", 0},
        {"wheatstone_bridge.amq", "\"0\"", "\"Z\"", 0},
        {"two_supernodes.amq", "\"0\"", "\"Z\"", 0},
        {"supernode.amq", "\"0\"", "\"Z\"", 0},
        // Named first, it leaves the supernode's members V1 and V2 last in order.
        {"supernode.amq", "\"0\"", "\"A\"", 0},
    };
    std::string out;
    for (const Case& c : cases) {
        const SolveSession s = Solved(ExampleText(c.example, c.reference, c.renamed), c.autoName);
        const Workspace& ws = s.ws;
        out += std::string(c.example) + (*c.reference != 0 ? " 0 renamed " : "") + c.renamed + ": ";
        const std::string& note = ws.equations.EqnText[6];
        const std::string before = "Notice that giving ";
        const std::size_t end = note.find(" a value, (say 0, thus making it the reference) "
                                          "makes it possible to then give values to the other "
                                          "variables.");
        if (note.empty() || note.rfind(before, 0) != 0 || end == std::string::npos) {
            out += "[" + note + "]\n";
            continue;
        }
        const std::string named = note.substr(before.size(), end - before.size());
        out += named;
        const std::vector<std::string> labels = NodeLabelTexts(ws, kViewVoltages, 3);
        for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
            if (ws.circuit.NodeLabels[slot].Name == named) {
                out += ", voltage " + FormatNumber(ws.circuit.NodeLabels[slot].Voltage, 8) +
                       ", label " + labels[static_cast<std::size_t>(slot)];
            }
        }
        out += "\n";
    }
    EXPECT_EQ(out, "two_supernodes.amq: []\n"
                   "wheatstone_bridge.amq: []\n"
                   "voltage_divider.amq 0 renamed \"Z\": Z, voltage 0, label Z = 0\n"
                   "wheatstone_bridge.amq 0 renamed \"Z\": V3, voltage 0, label V3 = 0\n"
                   "two_supernodes.amq 0 renamed \"Z\": Z, voltage 0, label Z = 0\n"
                   "supernode.amq 0 renamed \"Z\": Z, voltage 0, label Z = 0\n"
                   "supernode.amq 0 renamed \"A\": V1, voltage 0, label V1 = 0\n");
}

TEST(CountingText, AReferenceInsideASupernodeIsTheReferenceSupernode) {
    const SolveSession s = Solved(ExampleText("wheatstone_bridge.amq"), 1);
    EXPECT_NE(s.ws.equations.CountingText.find(
                  "We can eliminate 1 more unknown, V1, by using the fact that V1=10.  "),
              std::string::npos);
    EXPECT_NE(s.ws.equations.CountingText.find("at every node or supernode except the reference "
                                               "supernode.\r\n\r\n"),
              std::string::npos);
}

TEST(CountingText, TwoUnknownsWithoutAReferenceAreRedundantWithTheOtherOne) {
    const SolveSession s = Solved(ExampleText("voltage_divider.amq", "\"0\"", "\"B\""), 0);
    EXPECT_EQ(s.ws.equations.CountingText,
              kOpening + "This circuit contains 2 nodes; hence there are 2 unknowns.\r\n\r\n" +
                  "To solve for these unknowns we need 2 equations, which we can get by "
                  "applying Kirchhoff's Current Law at every node.  Note that these equations "
                  "are redundant.    (This is always the case in nodal analysis because knowing "
                  "how much current flows out the first node means that one automatically knows "
                  "how much current flows into the other one.  " +
                  kRedundancyEnd);
    // The last variable in name order (V1) is left free and read as 0; B is relative to it.
    EXPECT_EQ(s.ws.circuit.NodeLabels[1].Voltage, 0);
    EXPECT_EQ(s.ws.circuit.NodeLabels[2].Voltage, -6);
}

TEST(CountingText, ThreeUnknownsWithoutAReferenceCountTheFirstTwoNodesOrSupernodes) {
    const SolveSession s = Solved(ExampleText("wheatstone_bridge.amq", "\"0\"", "\"V4\""), 0);
    EXPECT_EQ(s.ws.equations.CountingText,
              kOpening + "This circuit contains 4 nodes; hence there are 4 unknowns.\r\n\r\n" +
                  "We can eliminate 1 unknown, V4, by using the fact that V4=V1-10.  Doing this "
                  "creates an extended node or 'supernode'.  (Supernodes are indicated in the "
                  "circuit diagram by red lines connecting red dots).\r\n\r\n" +
                  "The result is a circuit with 3 unknowns, V1, V2, V3.\r\n\r\n" +
                  "To solve for these unknowns we need 3 equations, which we can get by "
                  "applying Kirchhoff's Current Law at every node or supernode.  Note that these "
                  "equations are redundant.    (This is always the case in nodal analysis because "
                  "knowing how much current flows out the first 2 nodes or supernodes means that "
                  "one automatically knows how much current flows into the last one.  " +
                  kRedundancyEnd + kFinalNote);
}

TEST(CountingText, EverythingKnownThroughTheReferenceLeavesNoUnknowns) {
    // The divider without its series resistor: the battery alone joins V1 to the reference.
    std::string text = ExampleText("voltage_divider.amq", "160,80,6,1000\r\n", "");
    text.replace(text.find("\r\n4\r\n"), 5, "\r\n3\r\n");
    const SolveSession s = Solved(text, 1);
    EXPECT_EQ(s.ws.equations.CountingText,
              kOpening + "This circuit contains 2 nodes; hence there are 2 unknowns.\r\n\r\n" +
                  kReference +
                  "We can eliminate 1 more unknown, V1, by using the fact that V1=12.  Doing this "
                  "creates an extended node or 'supernode'.  (Supernodes are indicated in the "
                  "circuit diagram by red lines connecting red dots).\r\n\r\n" +
                  "The result is a circuit with no unknowns.\r\n\r\n");
    EXPECT_EQ(Captions(s.ws),
              "There are no unknown nodal voltages and no equations.|\n|\n|\n|\n|\n|\n|\n");
    EXPECT_EQ(s.ws.circuit.NodeLabels[1].Voltage, 12);
}

} // namespace
} // namespace ampora
