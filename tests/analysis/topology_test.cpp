// Drawings as a person makes them, cleaned up, their nodes found and their chains traced and
// summed, compared whole with the hand-checked tests/data/analysis/topology.txt.

#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/node_finding.h"
#include "analysis/wire_cleanup.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/circuit_dump.h"
#include "support/drawn_circuit.h"
#include "support/test_files.h"
#include "support/topology_dump.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

namespace ampora {
namespace {

using test::Drawn;

// Clean-up, nodes and chains; the sums only when nothing stops the analysis before them.
std::string Analysed(Circuit circuit) {
    Topology topology;
    CleanUpWires(circuit);
    FindNodes(circuit, topology);
    TraceBranches(circuit, topology);
    if (circuit.NumNodes > 0 && topology.NumLooseEnds == 0 && topology.NumLoops == 0) {
        SumBranches(circuit, topology);
    }
    return test::DumpTopology(circuit, topology);
}

// 10 ohms on the left, a 5 V battery pointing up in the middle, 20 ohms on the right.
Circuit ThreeBranches() {
    return test::ThreeBranches(kResistorVertical, 10, kBatteryUp, 5, kResistorVertical, 20);
}

// A node label left by the previous run.
void AddNodeLabel(Circuit& circuit, float x, float y, const char* name) {
    NodeLabel& node = circuit.NodeLabels[++circuit.NumNodes];
    node.X = x;
    node.Y = y;
    node.Name = name;
}

Circuit With(Circuit circuit, const std::vector<test::W>& wires,
             const std::vector<test::E>& devices = {}) {
    test::Draw(circuit, wires, devices);
    return circuit;
}

TEST(Topology, EachDrawingIsCleanedUpNodedTracedAndSummedAsWorkedByHand) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Circuit named = ThreeBranches(); // nodes of the previous run pass on their names
    AddNodeLabel(named, 80, 160, "0");
    AddNodeLabel(named, 40, 40, "Gone");
    Circuit duplicates = Drawn({{0, 0, 80, 0},
                                {5, 5, 6, 6},
                                {80, 0, 0, 0},
                                {0, 0, 0, 80},
                                {40, 40, 40, 40},
                                {0, 0, 80, 0}});
    ClearUndoMemory(duplicates);
    EraseWireSlot(duplicates, 2);
    Circuit longWires; // the T-junctions example as first drawn, its long wires met halfway
    ReadCircuitText(longWires, test::ReadBytes(std::filesystem::path(AMPORA_SOURCE_DIR) /
                                               "tests/data/analysis/t_junctions_long_wires.amq"));
    const std::pair<const char*, Circuit> cases[] = {
        {"a T: a node of three wires, a stub along each, a chain from each loose end",
         Drawn({{0, 0, 160, 0}, {80, 0, 80, 80}})},
        // A path writes each end as its wire holds it; the split takes the end of the wire
        // ending there, and the node the first of its ends.
        {"a split at minus zero", Drawn({{-80, 0, 80, 0}, {-0.0f, 0, -0.0f, 80}})},
        {"a junction reached as minus zero and as zero",
         Drawn({{-80, 0, -0.0f, 0}, {0, 0, 80, 0}, {0, 0, 0, 80}},
               {{kResistorHorizontal, 5, -40, 0}})},
        {"a plus of two crossing wires: no node", Drawn({{0, 80, 160, 80}, {80, 0, 80, 160}})},
        {"four wires ending at the centre: a node",
         Drawn({{0, 80, 80, 80}, {80, 80, 160, 80}, {80, 0, 80, 80}, {80, 80, 80, 160}})},
        {"a wire with two junctions, split piece by piece",
         Drawn({{240, 0, 0, 0}, {80, 0, 80, 80}, {160, 80, 160, 0}})},
        // Wire 3 splits wire 1 at 40,120, the end it shares with wire 4's middle. Wire 1 then
        // splits wire 4 before wire 3 splits wire 2; wire 4's low piece repeats wire 3.
        {"a split wire splits onwards first",
         Drawn({{0, 120, 80, 120}, {0, 80, 80, 80}, {40, 80, 40, 120}, {40, 80, 40, 160}})},
        {"overlapping collinear wires", Drawn({{0, 0, 100, 0}, {50, 0, 150, 0}})},
        {"a wire inside a collinear one", Drawn({{0, 40, 0, 200}, {0, 80, 0, 120}})},
        // A slanted wire lies along the level of its first end; NaN equals nothing, not even
        // itself; minus zero is zero, so wire 6 repeats wire 5.
        {"slanted, NaN and minus zero wires", Drawn({{0, 0, 160, 0},
                                                     {80, 0, 160, 80},
                                                     {nan, 0, nan, 80},
                                                     {nan, 0, nan, 80},
                                                     {-0.0f, 0, -0.0f, 40},
                                                     {0, 40, 0, 0}})},
        {"duplicates, reversed or not, and wires of no length go", duplicates},
        {"a closed rectangle without nodes is a loop",
         Drawn({{0, 0, 160, 0}, {160, 0, 160, 160}, {160, 160, 0, 160}, {0, 160, 0, 0}},
               {{kBatteryRight, 9, 80, 0}, {kResistorVertical, 3, 160, 80}})},
        {"a loop beside a circuit with nodes comes after the node chains",
         With(ThreeBranches(),
              {{400, 0, 480, 0}, {480, 0, 480, 80}, {480, 80, 400, 80}, {400, 80, 400, 0}})},
        // The battery points up: - on the chain traced down, + on its twin; named once.
        {"every branch traced from both ends", ThreeBranches()},
        {"devices on corner points add to no sum",
         With(ThreeBranches(), {}, {{kResistorVertical, 99, 0, 0}, {kBatteryDown, 7, 160, 160}})},
        // Left: a source up and a battery left on the bottom edge; right: a battery pointing
        // right on the top edge and 4 + 6 ohms.
        {"sources and batteries count plus with the travel",
         With(test::ThreeBranches(kSourceUp, 2, kResistorVertical, 1, kResistorVertical, 4), {},
              {{kBatteryLeft, 3, 40, 160},
               {kBatteryRight, 12, 120, 0},
               {kResistorVertical, 6, 160, 120}})},
        {"names of the previous run", named},
        {"a wire leading nowhere", With(ThreeBranches(), {{160, 40, 240, 40}})},
        {"long wires met halfway", longWires},
    };
    std::string dump;
    for (const auto& [what, circuit] : cases) {
        dump += std::string("== ") + what + "\n" + Analysed(circuit);
    }
    EXPECT_EQ(dump, test::ExpectedText("analysis/topology.txt", dump));
}

TEST(Topology, NodesAndLooseEndsPastTheirTablesAreCountedAndAFifthEndIsRefused) {
    // A ladder with rungs every 40 units: two nodes for each inner rung.
    auto ladder = [](int rungs) {
        Circuit circuit;
        const float right = 40.0f * static_cast<float>(rungs - 1);
        AddWire(circuit, 0, 0, right, 0);
        AddWire(circuit, 0, 80, right, 80);
        for (int k = 0; k < rungs; ++k) {
            AddWire(circuit, 40.0f * static_cast<float>(k), 0, 40.0f * static_cast<float>(k), 80);
        }
        CleanUpWires(circuit);
        return circuit;
    };
    Circuit manyNodes = ladder(14); // 24 nodes: counted, the old names kept
    AddNodeLabel(manyNodes, 40, 0, "kept");
    Topology topology;
    EXPECT_EQ(FindNodes(manyNodes, topology).nodes, 24);
    EXPECT_EQ(manyNodes.NumNodes, 1);
    EXPECT_EQ(manyNodes.NodeLabels[1].Name, "kept");

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

TEST(WireCleanup, MovingWiresForgetsUndoMarksThatWouldNameOtherWiresAndNoChangeKeepsThem) {
    Circuit moved = Drawn({{0, 0, 80, 0}, {0, 0, 0, 80}, {80, 0, 80, 80}});
    ClearUndoMemory(moved);
    EraseWireSlot(moved, 1);
    CleanUpWires(moved);
    EXPECT_EQ(test::DumpCircuit(moved), "NumWires 2\n"
                                        "wire 1 live 0,0 0,80\n"
                                        "wire 2 live 80,0 80,80\n"
                                        "NumElements 0\n"
                                        "NumNodes 0\n");
    EXPECT_EQ(moved.Wires[3].Used, 0); // slots above the count stay free

    Circuit kept = Drawn({{0, 0, 80, 0}, {0, 0, 0, 80}});
    ClearUndoMemory(kept);
    EraseWireSlot(kept, 2);
    RestoreErased(kept); // marks stay after a restore
    CleanUpWires(kept);
    EXPECT_EQ(kept.ErasedWire[2], 1);
}

TEST(WireCleanup, ASplitThatNeedsASlotPastTheFullTableThrowsAndTheCountStays) {
    Circuit circuit;
    for (int k = 0; k < 99; ++k) {
        AddWire(circuit, 1000, 8.0f * static_cast<float>(k), 1008, 8.0f * static_cast<float>(k));
    }
    circuit.Wires[99] = Wire{80, 0, 80, 80, kTrue}; // a T on the last wire
    AddWire(circuit, 0, 0, 160, 0);
    ASSERT_EQ(circuit.NumWires, 100);
    EXPECT_THROW(CleanUpWires(circuit), SlotOutOfRange);
    EXPECT_EQ(circuit.NumWires, 100);
}

} // namespace
} // namespace ampora
