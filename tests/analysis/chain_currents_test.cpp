#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/chain_currents.h"
#include "analysis/node_finding.h"
#include "analysis/wire_cleanup.h"
#include "support/drawn_circuit.h"
#include "support/test_files.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

Circuit With(Circuit circuit, const std::vector<test::E>& devices) {
    test::Draw(circuit, {}, devices);
    return circuit;
}

// Nodes at (80,0) and (80,160) joined on the left (a 5 V battery pointing down above a
// 10 ohm resistor), in the middle (a battery pointing up) and on the right (a 2 A source
// pointing up above a 4 ohm resistor). A resistor off every wire and one on a corner too.
struct Traced {
    Circuit circuit = With(test::ThreeBranches(kBatteryDown, 5, kBatteryUp, 9, kSourceUp, 2),
                           {{kResistorVertical, 10, 0, 120},
                            {kResistorVertical, 4, 160, 120},
                            {kResistorHorizontal, 1, 400, 400},
                            {kResistorVertical, 1, 0, 0}});
    Topology topology;

    Traced() {
        CleanUpWires(circuit);
        FindNodes(circuit, topology);
        TraceBranches(circuit, topology);
        SumBranches(circuit, topology);
    }
};

// Each device's current signed for the screen and its chain, then each chain's current, with
// the top and bottom node at the voltages given; worked by hand in
// tests/data/analysis/chain_currents.txt (left: (5 V + top - bottom) / 10 ohm down the screen;
// right: the source's 2 A, up; a zero current is -0 in the chain and 0 in its twin).
TEST(ChainCurrents, DevicesCarryTheirChainsCurrentSignedForTheScreenAndTwinsTheOpposite) {
    std::string out;
    for (const auto& [top, bottom] : {std::pair{0.0, 0.0}, {3.0, 1.0}, {0.0, 5.0}}) {
        Traced t;
        t.circuit.NodeLabels[1].Voltage = top;
        t.circuit.NodeLabels[2].Voltage = bottom;
        ComputeCurrents(t.circuit, t.topology);
        out += "== top " + ShortestText(top) + " V, bottom " + ShortestText(bottom) + " V\n";
        for (int slot = 1; slot <= t.circuit.NumElements; ++slot) {
            const Element& e = t.circuit.Elements[slot];
            out += "element " + std::to_string(slot) + " " + ShortestText(e.Current) + " chain " +
                   std::to_string(e.Branch) + "\n";
        }
        for (int b = 1; b <= t.topology.NumBranches; ++b) {
            out += "chain " + std::to_string(b) + " " +
                   ShortestText(t.topology.Branches[b].Current) + "\n";
        }
    }
    EXPECT_EQ(out, test::ExpectedText("analysis/chain_currents.txt", out));
}

TEST(ChainCurrents, SettingAChainCurrentFromAnUpwardDeviceKeepsItsSignAndFlipsTheTwin) {
    Traced t;
    SetChainCurrent(t.topology, 5, 0.25); // the middle chain traced upward
    EXPECT_EQ(t.topology.Branches[5].Current, 0.25);
    EXPECT_EQ(t.topology.Branches[2].Current, -0.25);
    SetChainCurrent(t.topology, -2, 0.25); // a device on chain 2, current up the screen
    EXPECT_EQ(t.topology.Branches[2].Current, -0.25);
    EXPECT_EQ(t.topology.Branches[5].Current, 0.25);
    EXPECT_THROW(SetChainCurrent(t.topology, kMaxChains + 1, 1), SlotOutOfRange);
}

} // namespace
} // namespace ampora
