#include "document/circuit_edit.h"
#include "support/circuit_dump.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::DumpCircuit;

Circuit FiveWires() {
    Circuit circuit;
    for (int i = 0; i < 5; ++i) {
        AddWire(circuit, 0, 16.0f * i, 80, 16.0f * i);
    }
    return circuit;
}

// A new wire fills the lowest erased slot and keeps the count; an erase remembers only
// itself and Undo brings it back. Checked by hand in tests/data/document/circuit_tables.txt.
TEST(CircuitTables, SlotsAndTheUndoMemoryAsHandChecked) {
    Circuit filled = FiveWires();
    ClearUndoMemory(filled);
    EraseWireSlot(filled, 3);
    EraseWireSlot(filled, 2);
    const int a = AddWire(filled, 8, 8, 8, 96), b = AddWire(filled, 16, 8, 16, 96);
    const int c = AddWire(filled, 24, 8, 24, 96);
    std::string dump = "== slots 3 and 2 erased, three wires added in " + std::to_string(a) + ", " +
                       std::to_string(b) + ", " + std::to_string(c) + "\n" + DumpCircuit(filled);
    Circuit undone = FiveWires();
    AddElement(undone, kBatteryLeft, 12, 40, 0);
    AddElement(undone, kResistorHorizontal, 5, 40, 16);
    ClearUndoMemory(undone);
    EraseWireSlot(undone, 1);
    ClearUndoMemory(undone); // a second erase forgets the first
    EraseWireSlot(undone, 2);
    EraseElementSlot(undone, 2);
    RestoreErased(undone);
    dump += "== wire 1 erased, then wire 2 and device 2, then Undo\n" + DumpCircuit(undone);
    // New after wire 4 and device 1 were erased: Undo brings back only what New erased.
    Circuit renewed = FiveWires();
    AddElement(renewed, kSourceUp, 2, 40, 0);
    AddElement(renewed, kBatteryDown, 9, 40, 32);
    ClearUndoMemory(renewed);
    EraseWireSlot(renewed, 4);
    EraseElementSlot(renewed, 1);
    EXPECT_TRUE(EraseWholeCircuit(renewed));
    dump += "== New after wire 4 and device 1 were erased\n" + DumpCircuit(renewed);
    RestoreErased(renewed);
    dump += "== then Undo\n" + DumpCircuit(renewed);
    Circuit empty;
    EXPECT_FALSE(EraseWholeCircuit(empty)); // New on nothing leaves nothing to undo
    EXPECT_EQ(dump, test::ExpectedText("document/circuit_tables.txt", dump));
}

TEST(CircuitTables, FullTablesRefuseNewItemsWithoutChangingAnything) {
    Circuit circuit;
    for (int i = 0; i < kMaxWires; ++i) {
        ASSERT_EQ(AddWire(circuit, 0, 8.0f * i, 80, 8.0f * i), i + 1);
    }
    for (int i = 0; i < kMaxElements; ++i) {
        ASSERT_EQ(AddElement(circuit, kResistorHorizontal, 1, 40, 8.0f * i), i + 1);
    }
    const std::string before = DumpCircuit(circuit);
    EXPECT_EQ(AddWire(circuit, 0, 0, 0, 80), 0);
    EXPECT_EQ(AddElement(circuit, kBatteryUp, 1, 0, 40), 0);
    EXPECT_EQ(DumpCircuit(circuit), before);
    EXPECT_EQ(circuit.NumWires, kMaxWires);
    EXPECT_EQ(circuit.NumElements, kMaxElements);
}

TEST(CircuitTables, SlotsOutsideTheCapacityThrowInsteadOfTouchingMemory) {
    Circuit circuit;
    EXPECT_THROW(circuit.Wires[0], SlotOutOfRange);
    EXPECT_THROW(circuit.Wires[kMaxWires + 1], SlotOutOfRange);
    EXPECT_THROW(circuit.Elements[61], SlotOutOfRange);
    EXPECT_THROW(circuit.NodeLabels[-3], SlotOutOfRange);
    EXPECT_THROW(EraseWireSlot(circuit, 101), SlotOutOfRange);
    EXPECT_NO_THROW(circuit.NodeLabels[20]);
}

TEST(ElementKinds, ReversedKindSwapsEachDirectionPairAndLeavesResistors) {
    std::string pairs;
    for (int kind = 1; kind <= 10; ++kind) {
        pairs += std::to_string(kind) + ">" + std::to_string(ReversedKind(kind)) + " ";
    }
    EXPECT_EQ(pairs, "1>2 2>1 3>4 4>3 5>5 6>6 7>8 8>7 9>10 10>9 ");
}

} // namespace
} // namespace ampora
