#include "document/circuit_edit.h"
#include "support/circuit_dump.h"

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

TEST(CircuitTables, NewWireFillsTheLowestErasedSlotAndKeepsTheCount) {
    Circuit circuit = FiveWires();
    ClearUndoMemory(circuit);
    EraseWireSlot(circuit, 3);
    EraseWireSlot(circuit, 2);
    EXPECT_EQ(AddWire(circuit, 8, 8, 8, 96), 2);
    EXPECT_EQ(AddWire(circuit, 16, 8, 16, 96), 3);
    EXPECT_EQ(AddWire(circuit, 24, 8, 24, 96), 6);
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 6\n"
                                    "wire 1 live 0,0 80,0\n"
                                    "wire 2 live(undo) 8,8 8,96\n"
                                    "wire 3 live(undo) 16,8 16,96\n"
                                    "wire 4 live 0,48 80,48\n"
                                    "wire 5 live 0,64 80,64\n"
                                    "wire 6 live 24,8 24,96\n"
                                    "NumElements 0\n"
                                    "NumNodes 0\n");
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

TEST(CircuitTables, AnEraseRemembersOnlyItselfAndUndoBringsItBack) {
    Circuit circuit = FiveWires();
    AddElement(circuit, kBatteryLeft, 12, 40, 0);
    AddElement(circuit, kResistorHorizontal, 5, 40, 16);
    ClearUndoMemory(circuit);
    EraseWireSlot(circuit, 1);
    ClearUndoMemory(circuit); // a second erase forgets the first
    EraseWireSlot(circuit, 2);
    EraseElementSlot(circuit, 2);
    RestoreErased(circuit);
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 5\n"
                                    "wire 1 empty 0,0 80,0\n"
                                    "wire 2 live(undo) 0,16 80,16\n"
                                    "wire 3 live 0,32 80,32\n"
                                    "wire 4 live 0,48 80,48\n"
                                    "wire 5 live 0,64 80,64\n"
                                    "NumElements 2\n"
                                    "element 1 kind 3 12 at 40,0\n"
                                    "element 2 kind 6(undo 6) 5 at 40,16\n"
                                    "NumNodes 0\n");
}

TEST(CircuitTables, NewErasesEverythingIntoTheUndoMemoryAndUndoRestoresTheDrawing) {
    Circuit empty;
    EXPECT_FALSE(EraseWholeCircuit(empty)); // New on nothing leaves nothing to undo
    Circuit circuit = FiveWires();
    AddElement(circuit, kSourceUp, 2, 40, 0);
    AddElement(circuit, kBatteryDown, 9, 40, 32);
    ClearUndoMemory(circuit);
    EraseWireSlot(circuit, 4);
    EraseElementSlot(circuit, 1);

    EXPECT_TRUE(EraseWholeCircuit(circuit));
    EXPECT_EQ(circuit.NumWires, 5);
    EXPECT_EQ(circuit.NumElements, 2);
    EXPECT_EQ(CountLiveWires(circuit), 0);
    EXPECT_EQ(CountLiveElements(circuit), 0);
    // Wire 4 and element 1 were already gone: New does not bring them back.
    EXPECT_EQ(circuit.ErasedWire[4], 0);
    EXPECT_EQ(circuit.ErasedKind[1], 0);

    RestoreErased(circuit);
    EXPECT_EQ(CountLiveWires(circuit), 4);
    EXPECT_EQ(CountLiveElements(circuit), 1);
    EXPECT_EQ(circuit.Elements[2].Kind, kBatteryDown);
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
