#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/chain_currents.h"
#include "analysis/node_finding.h"
#include "analysis/wire_cleanup.h"
#include "document/circuit_edit.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

// Nodes at (80,0) and (80,160) joined on the left (a 5 V battery pointing down above a
// 10 ohm resistor), in the middle (a battery pointing up) and on the right (a 2 A source
// pointing up above a 4 ohm resistor). A resistor off every wire and one on a corner too.
struct Fixture {
    Circuit circuit;
    Topology topology;

    explicit Fixture(double top, double bottom) {
        for (const auto& w : {std::array<float, 4>{80, 0, 0, 0},
                              {0, 0, 0, 160},
                              {0, 160, 80, 160},
                              {80, 0, 80, 160},
                              {80, 0, 160, 0},
                              {160, 0, 160, 160},
                              {160, 160, 80, 160}}) {
            AddWire(circuit, w[0], w[1], w[2], w[3]);
        }
        AddElement(circuit, kBatteryDown, 5, 0, 40);
        AddElement(circuit, kResistorVertical, 10, 0, 120);
        AddElement(circuit, kBatteryUp, 9, 80, 80);
        AddElement(circuit, kSourceUp, 2, 160, 40);
        AddElement(circuit, kResistorVertical, 4, 160, 120);
        AddElement(circuit, kResistorHorizontal, 1, 400, 400);
        AddElement(circuit, kResistorVertical, 1, 0, 0);
        CleanUpWires(circuit);
        FindNodes(circuit, topology);
        TraceBranches(circuit, topology);
        SumBranches(circuit, topology);
        circuit.NodeLabels[1].Voltage = top;
        circuit.NodeLabels[2].Voltage = bottom;
    }

    std::string Currents() {
        std::string out;
        for (int slot = 1; slot <= circuit.NumElements; ++slot) {
            const Element& e = circuit.Elements[slot];
            out += "element " + std::to_string(slot) + " " + ShortestText(e.Current) + " branch " +
                   std::to_string(e.Branch) + "\n";
        }
        for (int b = 1; b <= topology.NumBranches; ++b) {
            out += "chain " + std::to_string(b) + " " + ShortestText(topology.Branches[b].Current) +
                   "\n";
        }
        return out;
    }
};

TEST(ChainCurrents, DevicesCarryTheirChainsCurrentSignedForTheScreenAndTwinsTheOpposite) {
    Fixture f(0, 0);
    ComputeCurrents(f.circuit, f.topology);
    // Left: (5 V + 0 - 0) / 10 ohm = 0.5 A down the screen. Right: the source's 2 A, up.
    EXPECT_EQ(f.Currents(), "element 1 -0.5 branch -1\n"
                            "element 2 -0.5 branch -1\n"
                            "element 3 999 branch 0\n"
                            "element 4 2 branch -3\n"
                            "element 5 2 branch -3\n"
                            "element 6 999 branch 0\n"
                            "element 7 999 branch 0\n"
                            "chain 1 0.5\n"
                            "chain 2 999\n"
                            "chain 3 -2\n"
                            "chain 4 -0.5\n"
                            "chain 5 999\n"
                            "chain 6 2\n");
}

TEST(ChainCurrents, TheNodeVoltagesDriveTheCurrentThroughAResistiveChain) {
    Fixture f(3, 1);
    ComputeCurrents(f.circuit, f.topology);
    // (5 + 3 - 1) / 10 along the trace from the top node.
    EXPECT_DOUBLE_EQ(f.topology.Branches[1].Current, 0.7);
    EXPECT_DOUBLE_EQ(f.circuit.Elements[2].Current, -0.7);
}

TEST(ChainCurrents, AZeroCurrentIsStoredAsNegativeZeroInTheChainAndPositiveInItsTwin) {
    Fixture f(0, 5); // the bottom node 5 V up cancels the battery: nothing flows on the left
    ComputeCurrents(f.circuit, f.topology);
    EXPECT_EQ(ShortestText(f.topology.Branches[1].Current), "-0");
    EXPECT_EQ(ShortestText(f.topology.Branches[4].Current), "0");
}

TEST(ChainCurrents, SettingAChainCurrentFromAnUpwardDeviceKeepsItsSignAndFlipsTheTwin) {
    Fixture f(0, 0);
    SetChainCurrent(f.topology, 5, 0.25); // the middle chain traced upward
    EXPECT_EQ(f.topology.Branches[5].Current, 0.25);
    EXPECT_EQ(f.topology.Branches[2].Current, -0.25);
    SetChainCurrent(f.topology, -2, 0.25); // a device on chain 2, current up the screen
    EXPECT_EQ(f.topology.Branches[2].Current, -0.25);
    EXPECT_EQ(f.topology.Branches[5].Current, 0.25);
    EXPECT_THROW(SetChainCurrent(f.topology, kMaxChains + 1, 1), SlotOutOfRange);
}

} // namespace
} // namespace ampora
