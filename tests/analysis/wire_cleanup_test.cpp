#include "analysis/wire_cleanup.h"
#include "document/circuit_edit.h"
#include "support/circuit_dump.h"
#include "support/drawn_circuit.h"
#include "support/topology_dump.h"

#include <gtest/gtest.h>

#include <limits>

namespace ampora {
namespace {

using test::Drawn;

std::string CleanedUp(Circuit circuit) {
    CleanUpWires(circuit);
    return "NumWires " + std::to_string(circuit.NumWires) + "\n" + test::DumpWires(circuit);
}

TEST(WireCleanup, AWireEndingOnTheMiddleOfAnotherSplitsItIntoTwo) {
    EXPECT_EQ(CleanedUp(Drawn({{0, 0, 160, 0}, {80, 0, 80, 80}})), "NumWires 3\n"
                                                                   "wire 1 0,0 80,0\n"
                                                                   "wire 2 80,0 80,80\n"
                                                                   "wire 3 80,0 160,0\n");
}

TEST(WireCleanup, ASplitPointTakesTheCoordinateOfTheWireEndingThereMinusZeroIncluded) {
    // Both halves of wire 1 end where wire 2 does, written as wire 2 writes it.
    EXPECT_EQ(CleanedUp(Drawn({{-80, 0, 80, 0}, {-0.0f, 0, -0.0f, 80}})), "NumWires 3\n"
                                                                          "wire 1 -80,0 -0,0\n"
                                                                          "wire 2 -0,0 -0,80\n"
                                                                          "wire 3 -0,0 80,0\n");
}

TEST(WireCleanup, WiresThatMerelyCrossStayWhole) {
    EXPECT_EQ(CleanedUp(Drawn({{0, 80, 160, 80}, {80, 0, 80, 160}})), "NumWires 2\n"
                                                                      "wire 1 0,80 160,80\n"
                                                                      "wire 2 80,0 80,160\n");
}

TEST(WireCleanup, AWireWithTwoJunctionsIsSplitPieceByPieceFromTheFirstPairAgain) {
    // After each split the scan starts over, so the second junction splits the new piece.
    EXPECT_EQ(CleanedUp(Drawn({{240, 0, 0, 0}, {80, 0, 80, 80}, {160, 80, 160, 0}})),
              "NumWires 5\n"
              "wire 1 0,0 80,0\n"
              "wire 2 80,0 80,80\n"
              "wire 3 160,80 160,0\n"
              "wire 4 80,0 160,0\n"
              "wire 5 160,0 240,0\n");
}

TEST(WireCleanup, AWireSplitAtTheEndOfALaterWireSplitsOnwardsBeforeThatWireGoesOn) {
    // Wire 3 splits wire 1 at 40,120, the end it shares with wire 4's middle. Wire 1, now
    // the first wire with an end inside another, splits wire 4 (into slot 6) before wire 3
    // gets to split wire 2 (into slot 7). Wire 4's low piece then repeats wire 3 and goes.
    EXPECT_EQ(CleanedUp(Drawn(
                  {{0, 120, 80, 120}, {0, 80, 80, 80}, {40, 80, 40, 120}, {40, 80, 40, 160}})),
              "NumWires 6\n"
              "wire 1 0,120 40,120\n"
              "wire 2 0,80 40,80\n"
              "wire 3 40,80 40,120\n"
              "wire 4 40,120 80,120\n"
              "wire 5 40,120 40,160\n"
              "wire 6 40,80 80,80\n");
}

TEST(WireCleanup, OverlappingCollinearWiresBecomeThreePiecesWithoutTheDoubledMiddle) {
    EXPECT_EQ(CleanedUp(Drawn({{0, 0, 100, 0}, {50, 0, 150, 0}})), "NumWires 3\n"
                                                                   "wire 1 0,0 50,0\n"
                                                                   "wire 2 50,0 100,0\n"
                                                                   "wire 3 100,0 150,0\n");
}

TEST(WireCleanup, AWireInsideAnotherCollinearOneSplitsItAtBothEnds) {
    EXPECT_EQ(CleanedUp(Drawn({{0, 40, 0, 200}, {0, 80, 0, 120}})), "NumWires 3\n"
                                                                    "wire 1 0,40 0,80\n"
                                                                    "wire 2 0,80 0,120\n"
                                                                    "wire 3 0,120 0,200\n");
}

TEST(WireCleanup, ASlantedWireLiesAlongTheLevelOfItsFirstEndAndNaNRepeatsNothing) {
    // Wire 2 is read as the horizontal 80..160 at y 0: its low end splits wire 1, and the
    // piece beyond, of the same form, then repeats it and goes. The two NaN wires equal
    // nothing, not even each other, and split nothing; minus zero is zero, so wire 6 repeats
    // wire 5.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(CleanedUp(Drawn({{0, 0, 160, 0},
                               {80, 0, 160, 80},
                               {nan, 0, nan, 80},
                               {nan, 0, nan, 80},
                               {-0.0f, 0, -0.0f, 40},
                               {0, 40, 0, 0}})),
              "NumWires 5\n"
              "wire 1 0,0 80,0\n"
              "wire 2 80,0 160,80\n"
              "wire 3 nan,0 nan,80\n"
              "wire 4 nan,0 nan,80\n"
              "wire 5 -0,0 -0,40\n");
}

TEST(WireCleanup, DuplicatesReversedOrNotAndZeroLengthWiresGoAndTheRestMoveToTheFront) {
    Circuit circuit = Drawn({{0, 0, 80, 0},
                             {5, 5, 6, 6},
                             {80, 0, 0, 0},
                             {0, 0, 0, 80},
                             {40, 40, 40, 40},
                             {0, 0, 80, 0}});
    ClearUndoMemory(circuit);
    EraseWireSlot(circuit, 2);
    EXPECT_EQ(CleanedUp(circuit), "NumWires 2\n"
                                  "wire 1 0,0 80,0\n"
                                  "wire 2 0,0 0,80\n");
}

TEST(WireCleanup, MovingWiresForgetsTheUndoMarksThatWouldNowNameOtherWires) {
    Circuit circuit = Drawn({{0, 0, 80, 0}, {0, 0, 0, 80}, {80, 0, 80, 80}});
    ClearUndoMemory(circuit);
    EraseWireSlot(circuit, 1);
    CleanUpWires(circuit);
    EXPECT_EQ(test::DumpCircuit(circuit), "NumWires 2\n"
                                          "wire 1 live 0,0 0,80\n"
                                          "wire 2 live 80,0 80,80\n"
                                          "NumElements 0\n"
                                          "NumNodes 0\n");
    EXPECT_EQ(circuit.Wires[3].Used, 0); // slots above the count stay free
}

TEST(WireCleanup, ATableWithNothingToChangeKeepsItsUndoMarks) {
    Circuit circuit = Drawn({{0, 0, 80, 0}, {0, 0, 0, 80}});
    ClearUndoMemory(circuit);
    EraseWireSlot(circuit, 2);
    RestoreErased(circuit); // marks stay after a restore
    CleanUpWires(circuit);
    EXPECT_EQ(circuit.ErasedWire[2], 1);
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
