#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/node_finding.h"
#include "analysis/wire_cleanup.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/drawn_circuit.h"
#include "support/test_files.h"
#include "support/topology_dump.h"
#include "tables/analysis_failure.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::Drawn;

NodeLabel NamedNode(float x, float y, const std::string& name) {
    NodeLabel node;
    node.X = x;
    node.Y = y;
    node.Name = name;
    return node;
}

// Clean-up, nodes and chains; the sums only when nothing stops the analysis before them.
std::string Analysed(Circuit& circuit, Topology& topology) {
    CleanUpWires(circuit);
    FindNodes(circuit, topology);
    TraceBranches(circuit, topology);
    if (circuit.NumNodes > 0 && topology.NumLooseEnds == 0 && topology.NumLoops == 0) {
        SumBranches(circuit, topology);
    }
    return test::DumpTopology(circuit, topology);
}

std::string Analysed(Circuit circuit) {
    Topology topology;
    return Analysed(circuit, topology);
}

// 10 ohms on the left, a 5 V battery pointing up in the middle, 20 ohms on the right.
Circuit ThreeBranches() {
    return test::ThreeBranches(kResistorVertical, 10, kBatteryUp, 5, kResistorVertical, 20);
}

TEST(Topology, ATJunctionIsANodeOfThreeWiresWithAStubAlongEachAndAChainFromEachLooseEnd) {
    EXPECT_EQ(Analysed(Drawn({{0, 0, 160, 0}, {80, 0, 80, 80}})),
              "wire 1 0,0 80,0\n"
              "wire 2 80,0 80,80\n"
              "wire 3 80,0 160,0\n"
              "node 1 \"[ ]\" 80,0 wires 1 2 3\n"
              "loose 1 0,0\n"
              "loose 2 80,80\n"
              "loose 3 160,0\n"
              "chain 1 1->0 80,0;0,0 R 0 EMF 0 J 0 \"\"\n"
              "chain 2 1->0 80,0;80,80 R 0 EMF 0 J 0 \"\"\n"
              "chain 3 1->0 80,0;160,0 R 0 EMF 0 J 0 \"\"\n"
              "chain 4 -1->0 0,0;80,0 R 0 EMF 0 J 0 \"\"\n"
              "chain 5 -2->0 80,80;80,0 R 0 EMF 0 J 0 \"\"\n"
              "chain 6 -3->0 160,0;80,0 R 0 EMF 0 J 0 \"\"\n"
              "branches 0 stubs 3 loose 3 loops 0 currents 0\n");
}

TEST(Topology, APathWritesEachWireEndAsThatWireHoldsItSoMinusZeroStaysApartFromZero) {
    // One junction, reached as -0,0 along the left wire and as 0,0 along the other two; its
    // node takes the first of them, and the chains from the node begin with the node's.
    const std::string dump = Analysed(Drawn({{-80, 0, -0.0f, 0}, {0, 0, 80, 0}, {0, 0, 0, 80}},
                                            {{kResistorHorizontal, 5, -40, 0}}));
    for (const char* path : {" -80,0;-0,0 ", " 80,0;0,0 ", " 0,80;0,0 ", " -0,0;-80,0 ",
                             " -0,0;80,0 ", " -0,0;0,80 "}) {
        EXPECT_NE(dump.find(path), std::string::npos) << path << " in\n" << dump;
    }
}

TEST(Topology, APlusOfTwoCrossingWiresHasNoNodeButFourWiresEndingAtTheCentreMakeOne) {
    Topology crossing;
    Circuit plus = Drawn({{0, 80, 160, 80}, {80, 0, 80, 160}});
    Analysed(plus, crossing);
    EXPECT_EQ(plus.NumNodes, 0);
    EXPECT_EQ(crossing.NumLooseEnds, 4);

    const std::string star =
        Analysed(Drawn({{0, 80, 80, 80}, {80, 80, 160, 80}, {80, 0, 80, 80}, {80, 80, 80, 160}}));
    EXPECT_NE(star.find("node 1 \"[ ]\" 80,80 wires 1 2 3 4\n"), std::string::npos) << star;
}

TEST(Topology, AClosedRectangleWithoutNodesIsOneLoop) {
    EXPECT_EQ(
        Analysed(Drawn({{0, 0, 160, 0}, {160, 0, 160, 160}, {160, 160, 0, 160}, {0, 160, 0, 0}},
                       {{kBatteryRight, 9, 80, 0}, {kResistorVertical, 3, 160, 80}})),
        "wire 1 0,0 160,0\n"
        "wire 2 160,0 160,160\n"
        "wire 3 160,160 0,160\n"
        "wire 4 0,160 0,0\n"
        "chain 1 -1->0 0,0;160,0;160,160;0,160;0,0 R 0 EMF 0 J 0 \"\"\n"
        "branches 0 stubs 0 loose 0 loops 1 currents 0\n");
}

TEST(Topology, ALoopBesideACircuitWithNodesIsFoundAfterTheNodeChains) {
    Circuit circuit = ThreeBranches();
    test::Draw(circuit,
               {{400, 0, 480, 0}, {480, 0, 480, 80}, {480, 80, 400, 80}, {400, 80, 400, 0}});
    const std::string dump = Analysed(circuit);
    EXPECT_NE(dump.find("chain 7 -1->0 400,0;480,0;480,80;400,80;400,0 R 0 EMF 0 J 0 \"\"\n"
                        "branches 6 stubs 0 loose 0 loops 1 currents 0\n"),
              std::string::npos)
        << dump;
}

TEST(Topology, EveryBranchIsTracedFromBothEndsAndABatteryOnlyBranchIsNamedOnceWithItsTwin) {
    // The battery points up: + on the twin traced upward, - on the chain traced downward.
    EXPECT_EQ(Analysed(ThreeBranches()),
              "wire 1 80,0 0,0\n"
              "wire 2 0,0 0,160\n"
              "wire 3 0,160 80,160\n"
              "wire 4 80,0 80,160\n"
              "wire 5 80,0 160,0\n"
              "wire 6 160,0 160,160\n"
              "wire 7 160,160 80,160\n"
              "node 1 \"[ ]\" 80,0 wires 1 4 5\n"
              "node 2 \"[ ]\" 80,160 wires 3 4 7\n"
              "chain 1 1->2 80,0;0,0;0,160;80,160 R 10 EMF 0 J 0 \"\"\n"
              "chain 2 1->2 80,0;80,160 R 0 EMF -5 J 0 \"I1\"\n"
              "chain 3 1->2 80,0;160,0;160,160;80,160 R 20 EMF 0 J 0 \"\"\n"
              "chain 4 2->1 80,160;0,160;0,0;80,0 R 10 EMF 0 J 0 \"\"\n"
              "chain 5 2->1 80,160;80,0 R 0 EMF 5 J 0 \"-I1\"\n"
              "chain 6 2->1 80,160;160,160;160,0;80,0 R 20 EMF 0 J 0 \"\"\n"
              "branches 6 stubs 0 loose 0 loops 0 currents 1\n");
}

TEST(Topology, ADeviceOnACornerPointOfAPathAddsToNoSum) {
    Circuit circuit = ThreeBranches();
    AddElement(circuit, kResistorVertical, 99, 0, 0);
    AddElement(circuit, kBatteryDown, 7, 160, 160);
    const std::string dump = Analysed(circuit);
    EXPECT_NE(dump.find("chain 1 1->2 80,0;0,0;0,160;80,160 R 10 EMF 0 J 0 \"\"\n"),
              std::string::npos)
        << dump;
    EXPECT_NE(dump.find("chain 3 1->2 80,0;160,0;160,160;80,160 R 20 EMF 0 J 0 \"\"\n"),
              std::string::npos)
        << dump;
}

TEST(Topology, SourcesAndBatteriesCountPlusWithTheTravelAndMinusAgainstIt) {
    // Left branch: a source pointing up and a battery pointing left on the bottom edge;
    // right branch: a battery pointing right on the top edge and 4 + 6 ohms.
    Circuit circuit = Drawn({{80, 0, 0, 0},
                             {0, 0, 0, 160},
                             {0, 160, 80, 160},
                             {80, 0, 80, 160},
                             {80, 0, 160, 0},
                             {160, 0, 160, 160},
                             {160, 160, 80, 160}},
                            {{kSourceUp, 2, 0, 80},
                             {kBatteryLeft, 3, 40, 160},
                             {kResistorVertical, 1, 80, 80},
                             {kBatteryRight, 12, 120, 0},
                             {kResistorVertical, 4, 160, 40},
                             {kResistorVertical, 6, 160, 120}});
    const std::string dump = Analysed(circuit);
    EXPECT_NE(dump.find("chain 1 1->2 80,0;0,0;0,160;80,160 R 0 EMF -3 J -2 \"\"\n"
                        "chain 2 1->2 80,0;80,160 R 1 EMF 0 J 0 \"\"\n"
                        "chain 3 1->2 80,0;160,0;160,160;80,160 R 10 EMF 12 J 0 \"\"\n"
                        "chain 4 2->1 80,160;0,160;0,0;80,0 R 0 EMF 3 J 2 \"\"\n"),
              std::string::npos)
        << dump;
}

TEST(Topology, ASecondCurrentSourceOnOneChainStopsTheSums) {
    Circuit circuit = ThreeBranches();
    AddElement(circuit, kSourceUp, 1, 0, 40);
    AddElement(circuit, kSourceDown, 1, 0, 120);
    Topology topology;
    CleanUpWires(circuit);
    FindNodes(circuit, topology);
    TraceBranches(circuit, topology);
    try {
        SumBranches(circuit, topology);
        FAIL() << "no failure";
    } catch (const AnalysisFailure failure) {
        EXPECT_EQ(failure, AnalysisFailure::TwoCurrentSources);
        EXPECT_EQ(static_cast<std::uint32_t>(failure), 0x80045401u);
    }
}

TEST(Topology, NodesOfThePreviousRunPassTheirNamesToNodesAtTheSamePoint) {
    Circuit circuit = ThreeBranches();
    circuit.NumNodes = 2;
    circuit.NodeLabels[1] = NamedNode(80, 160, "0");
    circuit.NodeLabels[2] = NamedNode(40, 40, "Gone");
    const std::string dump = Analysed(circuit);
    EXPECT_NE(dump.find("node 1 \"[ ]\" 80,0 wires 1 4 5\n"
                        "node 2 \"0\" 80,160 wires 3 4 7\n"),
              std::string::npos)
        << dump;
}

TEST(Topology, AWireLeadingNowhereGivesAStubInNodeOrderAndAChainFromItsLooseEnd) {
    Circuit circuit = ThreeBranches();
    AddWire(circuit, 160, 40, 240, 40); // ends on the right branch, leads nowhere
    EXPECT_EQ(Analysed(circuit), "wire 1 80,0 0,0\n"
                                 "wire 2 0,0 0,160\n"
                                 "wire 3 0,160 80,160\n"
                                 "wire 4 80,0 80,160\n"
                                 "wire 5 80,0 160,0\n"
                                 "wire 6 160,0 160,40\n"
                                 "wire 7 160,160 80,160\n"
                                 "wire 8 160,40 240,40\n"
                                 "wire 9 160,40 160,160\n"
                                 "node 1 \"[ ]\" 80,0 wires 1 4 5\n"
                                 "node 2 \"[ ]\" 80,160 wires 3 4 7\n"
                                 "node 3 \"[ ]\" 160,40 wires 6 8 9\n"
                                 "loose 1 240,40\n"
                                 "chain 1 1->2 80,0;0,0;0,160;80,160 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 2 1->2 80,0;80,160 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 3 1->3 80,0;160,0;160,40 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 4 2->1 80,160;0,160;0,0;80,0 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 5 2->1 80,160;80,0 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 6 2->3 80,160;160,160;160,40 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 7 3->1 160,40;160,0;80,0 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 8 3->0 160,40;240,40 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 9 3->2 160,40;160,160;80,160 R 0 EMF 0 J 0 \"\"\n"
                                 "chain 10 -1->0 240,40;160,40 R 0 EMF 0 J 0 \"\"\n"
                                 "branches 8 stubs 1 loose 1 loops 0 currents 0\n");
}

TEST(Topology, NodesAndLooseEndsPastTheirTablesAreCountedAndTwentyNodesTraceWhole) {
    // A ladder with rungs every 40 units: two nodes for each inner rung.
    auto ladder = [](int rungs) {
        Circuit circuit;
        const float right = 40.0f * static_cast<float>(rungs - 1);
        AddWire(circuit, 0, 0, right, 0);
        AddWire(circuit, 0, 80, right, 80);
        for (int k = 0; k < rungs; ++k) {
            AddWire(circuit, 40.0f * static_cast<float>(k), 0, 40.0f * static_cast<float>(k), 80);
        }
        return circuit;
    };
    Circuit manyNodes = ladder(14); // 24 nodes
    manyNodes.NumNodes = 1;
    manyNodes.NodeLabels[1] = NamedNode(40, 0, "kept");
    Topology topology;
    CleanUpWires(manyNodes);
    const FoundPoints tooMany = FindNodes(manyNodes, topology);
    EXPECT_EQ(tooMany.nodes, 24);
    EXPECT_EQ(manyNodes.NumNodes, 1);
    EXPECT_EQ(manyNodes.NodeLabels[1].Name, "kept");

    Circuit full = ladder(12); // 20 nodes of three wires: 60 traces
    CleanUpWires(full);
    EXPECT_EQ(FindNodes(full, topology).nodes, 20);
    TraceBranches(full, topology);
    EXPECT_EQ(topology.NumBranches, 60);
    EXPECT_EQ(NumChains(topology), 60);

    Circuit scattered; // 21 separate wires: 42 loose ends, of which the table keeps 20
    for (int k = 0; k < 21; ++k) {
        AddWire(scattered, 0, 16.0f * static_cast<float>(k), 80, 16.0f * static_cast<float>(k));
    }
    CleanUpWires(scattered);
    EXPECT_EQ(FindNodes(scattered, topology).looseEnds, 42);
    EXPECT_EQ(topology.NumLooseEnds, 20);

    // A slanted wire from a hand-written file brings a fifth end to a point of four.
    Circuit fiveEnds = Drawn(
        {{0, 80, 80, 80}, {80, 80, 160, 80}, {80, 0, 80, 80}, {80, 80, 80, 160}, {0, 0, 80, 80}});
    CleanUpWires(fiveEnds);
    EXPECT_THROW(FindNodes(fiveEnds, topology), SlotOutOfRange);
}

TEST(Topology, LongWiresWithTJunctionsAreSplitIntoSevenWiresWithTheSumsOfTheThreeBranches) {
    // The T-junctions example as first drawn: the top and bottom wires run the whole width,
    // and the middle wire meets each of them halfway.
    Circuit circuit;
    ASSERT_TRUE(ReadCircuitText(circuit, "5\r\n80,80,80,240\r\n80,80,400,80\r\n240,80,240,240\r\n"
                                         "400,80,400,240\r\n80,240,400,240\r\n5\r\n80,160,1,9\r\n"
                                         "160,80,6,3\r\n240,160,5,6\r\n320,80,6,4\r\n"
                                         "400,160,5,8\r\n2\r\n\"V1\",\"V1\",240,80\r\n"
                                         "\"0\",\"0\",240,240\r\n")
                    .complete);
    EXPECT_EQ(Analysed(circuit), "wire 1 80,80 80,240\n"
                                 "wire 2 80,80 240,80\n"
                                 "wire 3 240,80 240,240\n"
                                 "wire 4 400,80 400,240\n"
                                 "wire 5 80,240 240,240\n"
                                 "wire 6 240,80 400,80\n"
                                 "wire 7 240,240 400,240\n"
                                 "node 1 \"V1\" 240,80 wires 2 3 6\n"
                                 "node 2 \"0\" 240,240 wires 3 5 7\n"
                                 "chain 1 1->2 240,80;80,80;80,240;240,240 R 3 EMF -9 J 0 \"\"\n"
                                 "chain 2 1->2 240,80;240,240 R 6 EMF 0 J 0 \"\"\n"
                                 "chain 3 1->2 240,80;400,80;400,240;240,240 R 12 EMF 0 J 0 \"\"\n"
                                 "chain 4 2->1 240,240;240,80 R 6 EMF 0 J 0 \"\"\n"
                                 "chain 5 2->1 240,240;80,240;80,80;240,80 R 3 EMF 9 J 0 \"\"\n"
                                 "chain 6 2->1 240,240;400,240;400,80;240,80 R 12 EMF 0 J 0 \"\"\n"
                                 "branches 6 stubs 0 loose 0 loops 0 currents 0\n");
}

} // namespace
} // namespace ampora
