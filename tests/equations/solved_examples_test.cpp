// The examples solved end to end, against voltages worked out by hand.

#include "analysis/format_number.h"
#include "support/solve_session.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::ExampleText;
using test::SolveSession;

// Node voltages in location order (as AutoName numbers them), supernodes and equations.
std::string Dump(const SolveSession& session) {
    const Workspace& ws = session.ws;
    if (!session.solved) {
        return "refused: " + (session.prompts.messages.empty() ? "" : session.prompts.messages[0]);
    }
    std::string text;
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.circuit.NodeLabels[slot];
        text += node.Name + "=" + FormatNumber(node.Voltage, 6) + " ";
    }
    text += "\n";
    for (int s = 1; s <= ws.equations.NumSuperNodes; ++s) {
        text += "supernode";
        for (const auto position : ws.equations.SuperNodes[s].Nodes) {
            text += " " + ws.circuit.NodeLabels[ws.naming.NodeOrder[position]].Name;
        }
        text += "\n";
    }
    for (std::size_t v = 0; v < ws.equations.EqnVars.size(); ++v) {
        text += ws.equations.FirstWritten[v] + "\n" + ws.equations.Collected[v] + "\n";
    }
    return text;
}

std::string Solved(const std::string& example, int autoName = 1) {
    SolveSession session;
    test::Solve(session, ExampleText(example), autoName);
    return Dump(session);
}

TEST(SolvedExamples, VoltageDividerHalvesTheBatteryAcrossTheParallelPair) {
    EXPECT_EQ(Solved("voltage_divider.amq"), "V1=6 0=0 \n"
                                             "(V1-0-12)/1000 + (V1-0)/2000 + (V1-0)/2000 = 0\n"
                                             "(1/1000+1/2000+1/2000)*V1=12/1000\n");
}

TEST(SolvedExamples, WheatstoneBridgeHasTheBatteryInASupernodeWithTheReference) {
    // V2 = 660/101, V3 = 650/101 by hand.
    EXPECT_EQ(Solved("wheatstone_bridge.amq"), "V1=10 0=0 V2=6.53465 V3=6.43564 \n"
                                               "supernode 0 V1\n"
                                               "(V2-10)/100 + (V2-0)/200 + (V2-V3)/50 = 0\n"
                                               "(1/100+1/200+1/50)*V2-(1/50)*V3=10/100\n"
                                               "(V3-10)/150 + (V3-0)/250 + (V3-V2)/50 = 0\n"
                                               "-(1/50)*V2+(1/150+1/250+1/50)*V3=10/150\n");
}

TEST(SolvedExamples, CurrentSourceFeedsANodeThatAlsoHasABatteryBranch) {
    // (V1 - 5)/20 + V1/10 = 2 gives V1 = 15.
    EXPECT_EQ(Solved("current_source.amq"), "V1=15 0=0 \n"
                                            "-2 + (V1-0-5)/20 + (V1-0)/10 = 0\n"
                                            "(1/20+1/10)*V1=2+5/20\n");
}

TEST(SolvedExamples, OneSupernodeIsWrittenThroughItsAnchor) {
    // V1/4 + (V1 + 6)/6 + (V1 + 6)/12 = 2 gives V1 = 1, and V2 = V1 + 6.
    EXPECT_EQ(Solved("supernode.amq"), "V1=1 V2=7 0=0 \n"
                                       "supernode V1 V2\n"
                                       "-2 + (V1-0)/4 + (V1+6-0)/12 + (V1+6-0)/6 = 0\n"
                                       "(1/4+1/12+1/6)*V1=2-6/12-6/6\n");
}

TEST(SolvedExamples, TwoSupernodesKeepTheReferenceNamedInTheFile) {
    // Solved by hand with exact fractions: V1 = 165/36, V2 = 25/9, V3 = 5/9,
    // V4 = -195/36, V5 = 50/9 against the node named "0" in the file.
    EXPECT_EQ(Solved("two_supernodes.amq"),
              "V1=4.58333 V2=2.77778 V3=0.555556 V4=-5.41667 0=0 V5=5.55556 \n"
              "supernode V1 V4\n"
              "supernode V3 V5\n"
              "(V1-V2)/10 + (V1-10-0)/30 = 0\n"
              "(1/10+1/30)*V1-(1/10)*V2=10/30\n"
              "(V2-V1)/10 + (V2-V3)/20 + (V2-0)/40 = 0\n"
              "-(1/10)*V1+(1/10+1/20+1/40)*V2-(1/20)*V3=0\n"
              "(V3-V2)/20 + (V3+5-0)/50 = 0\n"
              "-(1/20)*V2+(1/20+1/50)*V3=-5/50\n");
}

TEST(SolvedExamples, LongWiresWithTJunctionsSolveLikeTheirSplitPieces) {
    // (V1 - 9)/3 + V1/6 + V1/(4 + 8) = 0 gives V1 = 36/7.
    EXPECT_EQ(Solved("t_junctions.amq"), "V1=5.14286 0=0 \n"
                                         "(V1-0-9)/3 + (V1-0)/6 + (V1-0)/12 = 0\n"
                                         "(1/3+1/6+1/12)*V1=9/3\n");
}

} // namespace
} // namespace ampora
