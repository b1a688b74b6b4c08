#include "document/circuit_edit.h"
#include "editor/editing_tools.h"
#include "editor/hit_tests.h"
#include "editor/snapping.h"
#include "support/circuit_dump.h"
#include "support/scripted_prompts.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ampora {
namespace {

using test::DumpCircuit;
using test::ScriptedPrompts;

TEST(Snapping, PointsSnapToTheGridLineFromThreeAndAHalfBelowToFourAndAHalfAbove) {
    std::string out;
    for (const float v : {0.0f, 4.0f, 4.4f, 4.5f, 5.0f, 12.4f, 12.5f, 16.0f, 20.4f, 20.5f, 161.0f,
                          164.0f, 165.0f}) {
        out += std::to_string(static_cast<int>(v * 10)) + "->" +
               std::to_string(static_cast<int>(Snap(v))) + " ";
    }
    EXPECT_EQ(out, "0->0 40->0 44->0 45->8 50->8 124->8 125->16 160->16 204->16 205->24 1610->160 "
                   "1640->160 1650->168 ");
}

TEST(Snapping, AbsurdPositionsSnapWithoutOverflow) {
    EXPECT_EQ(Snap(1e30f), 1e9f);
    EXPECT_EQ(Snap(std::numeric_limits<float>::quiet_NaN()), 0.0f);
}

TEST(Snapping, AxisConstraintPrefersHorizontalOnATie) {
    const auto constrained = [](float ex, float ey) {
        ConstrainToAxis(80, 80, ex, ey);
        return std::to_string(static_cast<int>(ex)) + "," + std::to_string(static_cast<int>(ey));
    };
    EXPECT_EQ(constrained(120, 120), "120,80");
    EXPECT_EQ(constrained(80, 80), "80,80");
    EXPECT_EQ(constrained(96, 200), "80,200");
    EXPECT_EQ(constrained(40, 72), "40,80");
}

TEST(WireTool, ADragMakesOneSnappedAxisParallelWireAndAClickMakesNone) {
    Circuit circuit;
    EditorState state;
    BeginWire(state, 81, 79);
    DragWire(state, 150, 100);
    EXPECT_EQ(state.EndX, 152);
    EXPECT_EQ(state.EndY, 80);
    EXPECT_EQ(FinishWire(circuit, state, 243, 110), 1);
    BeginWire(state, 240, 80);
    EXPECT_EQ(FinishWire(circuit, state, 250, 230), 2);
    BeginWire(state, 297, 300);
    EXPECT_EQ(FinishWire(circuit, state, 300, 298), 0);
    EXPECT_FALSE(state.DrawingWire);
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 2\n"
                                    "wire 1 live 80,80 240,80\n"
                                    "wire 2 live 240,80 240,232\n"
                                    "NumElements 0\n"
                                    "NumNodes 0\n");
}

Circuit Square() {
    Circuit circuit;
    AddWire(circuit, 80, 80, 240, 80);   // 1 top
    AddWire(circuit, 240, 80, 240, 240); // 2 right
    AddWire(circuit, 80, 240, 240, 240); // 3 bottom
    AddWire(circuit, 80, 80, 80, 240);   // 4 left
    AddWire(circuit, 300, 80, 340, 80);  // 5 a short stub
    return circuit;
}

TEST(SegmentTest, ADeviceNeedsMoreThanTwentyUnitsToBothEndsAndRoomFromOthers) {
    Circuit circuit = Square();
    EXPECT_EQ(SegmentTest(circuit, 160, 80, 0), kHorizontalSegment);
    EXPECT_EQ(SegmentTest(circuit, 240, 160, 0), kVerticalSegment);
    EXPECT_EQ(SegmentTest(circuit, 100, 80, 0), kNoSegment); // exactly 20 from the end
    EXPECT_EQ(SegmentTest(circuit, 104, 80, 0), kHorizontalSegment);
    EXPECT_EQ(SegmentTest(circuit, 320, 80, 0), kNoSegment); // a 40-unit wire holds none
    EXPECT_EQ(SegmentTest(circuit, 160, 84, 0), kNoSegment);
    AddElement(circuit, kResistorHorizontal, 1, 136, 80);
    EXPECT_EQ(SegmentTest(circuit, 168, 80, 0), kNoSegment);         // 32 apart
    EXPECT_EQ(SegmentTest(circuit, 176, 80, 0), kHorizontalSegment); // 40 apart
    EXPECT_EQ(SegmentTest(circuit, 168, 80, 1), kHorizontalSegment); // itself ignored
}

TEST(DevicePlacement, EachToolPlacesItsKindForTheWireAxisWithTheTypedValue) {
    Circuit circuit = Square();
    EditorState state;
    ScriptedPrompts prompts;
    prompts.textAnswers = {"12", "-1.5", "2k", "-3", "", "0.25", "-2"};
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kBatteryTool, 161, 79), 1);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kBatteryTool, 240, 120), 2);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kResistorTool, 240, 200), 3);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kResistorTool, 160, 240), 4);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kResistorTool, 80, 120), 5);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kSourceTool, 80, 200), 6);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kSourceTool, 208, 240), 7);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kSourceTool, 320, 80), 0);
    EXPECT_EQ(PlaceDevice(circuit, state, prompts, kWireTool, 120, 80), 0);
    EXPECT_EQ(DumpCircuit(circuit).substr(DumpCircuit(circuit).find("NumElements")),
              "NumElements 7\n"
              "element 1 kind 3 12 at 160,80\n"
              "element 2 kind 2 1.5 at 240,120\n"
              "element 3 kind 5 0 at 240,200\n"
              "element 4 kind 6 0 at 160,240\n"
              "element 5 kind 5 0 at 80,120\n"
              "element 6 kind 7 0.25 at 80,200\n"
              "element 7 kind 10 2 at 208,240\n"
              "NumNodes 0\n");
    std::string labels;
    for (int slot = 1; slot <= 7; ++slot) {
        labels += "[" + state.ValueText[slot] + "]";
    }
    EXPECT_EQ(labels, "[12][1.5][0][0][0][0.25][2]");
    EXPECT_EQ(prompts.messages,
              (std::vector<std::string>{"(!) Warning: Invalid entry.  Resistance changed to 0.",
                                        "(!) Warning: Invalid entry.  Resistance changed to 0."}));
    EXPECT_EQ(prompts.questions[0], "A negative value reverses the battery direction.\r\n"
                                    "Enter the battery voltage in volts. [0]");
    EXPECT_EQ(prompts.questions[2], "Enter the resistance in ohms: [0]");
    EXPECT_EQ(prompts.questions[5], "A negative value reverses the current source direction.\r\n"
                                    "Enter the current source current in amperes. [0]");
}

TEST(DevicePlacement, NonNumericSourceValuesBecomeZeroWithTheirOwnWarning) {
    Circuit circuit = Square();
    EditorState state;
    ScriptedPrompts prompts;
    prompts.textAnswers = {"twelve", "-x", "1e99"};
    PlaceDevice(circuit, state, prompts, kBatteryTool, 160, 80);
    PlaceDevice(circuit, state, prompts, kSourceTool, 240, 160);
    PlaceDevice(circuit, state, prompts, kSourceTool, 80, 160);
    EXPECT_EQ(prompts.messages, (std::vector<std::string>{
                                    "(!) Warning: Invalid entry.  Battery voltage changed to 0.",
                                    "(!) Warning: Invalid entry.  Current changed to 0.",
                                    "(!) Warning: Invalid entry.  Current changed to 0."}));
    EXPECT_EQ(circuit.Elements[1].Kind, kBatteryLeft);
    EXPECT_EQ(circuit.Elements[2].Kind, kSourceUp);
    EXPECT_EQ(state.ValueText[3], "0");
}

TEST(NumberTool, ANegativeValueTogglesTheDirectionAndTwiceRestoresIt) {
    Circuit circuit = Square();
    EditorState state;
    ScriptedPrompts prompts;
    prompts.textAnswers = {"9", "1", "-5", "-5", "", "abc", "-4", "470"};
    PlaceDevice(circuit, state, prompts, kBatteryTool, 160, 80);
    PlaceDevice(circuit, state, prompts, kResistorTool, 240, 160);
    RenumberDevice(circuit, state, prompts, 1);
    EXPECT_EQ(circuit.Elements[1].Kind, kBatteryRight);
    RenumberDevice(circuit, state, prompts, 1);
    EXPECT_EQ(circuit.Elements[1].Kind, kBatteryLeft);
    EXPECT_EQ(circuit.Elements[1].Value, 5);
    RenumberDevice(circuit, state, prompts, 1); // empty keeps
    RenumberDevice(circuit, state, prompts, 1); // invalid keeps
    RenumberDevice(circuit, state, prompts, 2); // a resistor refuses a minus
    RenumberDevice(circuit, state, prompts, 2);
    EXPECT_EQ(circuit.Elements[1].Value, 5);
    EXPECT_EQ(state.ValueText[1], "5");
    EXPECT_EQ(circuit.Elements[2].Value, 470);
    EXPECT_EQ(circuit.Elements[2].Kind, kResistorVertical);
    EXPECT_EQ(prompts.messages, (std::vector<std::string>{"(!) Warning: Invalid entry.",
                                                          "(!) Warning: Invalid entry."}));
    EXPECT_EQ(prompts.questions[3], "A negative value reverses the battery direction.\r\n"
                                    "Enter the battery voltage in volts. [5]");
}

TEST(MoveTool, ADeviceDroppedOnTheOtherAxisTakesThatAxisFirstDirection) {
    Circuit circuit = Square();
    EditorState state;
    AddElement(circuit, kBatteryRight, 9, 160, 80);
    AddElement(circuit, kSourceDown, 2, 80, 160);
    AddElement(circuit, kResistorHorizontal, 100, 160, 240);
    // Grabbed 5 units right and 7 down of the picture's corner.
    GrabDevice(circuit, state, 1, 149, 71);
    EXPECT_TRUE(DropDevice(circuit, state, 184 + 5, 64 + 7)); // same axis: kind stays
    GrabDevice(circuit, state, 1, 189, 71);
    EXPECT_TRUE(DropDevice(circuit, state, 240 - 16 + 5, 120 - 16 + 7));
    GrabDevice(circuit, state, 2, 64, 144);
    EXPECT_TRUE(DropDevice(circuit, state, 104 - 16, 240 - 16));
    GrabDevice(circuit, state, 3, 144, 224);
    EXPECT_FALSE(DropDevice(circuit, state, 120 - 16, 240 - 16)); // too near device 2
    GrabDevice(circuit, state, 3, 144, 224);
    EXPECT_FALSE(DropDevice(circuit, state, 300, 300)); // no wire there
    GrabDevice(circuit, state, 3, 144, 224);
    EXPECT_TRUE(DropDevice(circuit, state, 80 - 16, 200 - 16));
    EXPECT_EQ(DumpCircuit(circuit).substr(DumpCircuit(circuit).find("NumElements")),
              "NumElements 3\n"
              "element 1 kind 1 9 at 240,120\n"
              "element 2 kind 9 2 at 104,240\n"
              "element 3 kind 5 100 at 80,200\n"
              "NumNodes 0\n");
}

TEST(StretchTool, DevicesFollowTheirWireAtTheSameFraction) {
    Circuit circuit;
    AddWire(circuit, 80, 80, 240, 80);
    AddElement(circuit, kResistorHorizontal, 10, 120, 80); // a quarter along
    AddElement(circuit, kBatteryLeft, 5, 200, 80);         // three quarters
    EditorState state;
    HoverStretch(circuit, state, 243, 77);
    EXPECT_EQ(state.DragState, 2);
    HoverStretch(circuit, state, 234, 80);
    EXPECT_EQ(state.DragState, 0);
    ASSERT_TRUE(BeginStretch(circuit, state, 242, 82));
    EXPECT_EQ(state.DragState, 5);
    DragStretch(circuit, state, 305, 90);
    EXPECT_EQ(state.EndX, 304);
    EXPECT_EQ(state.EndY, 80);
    EXPECT_TRUE(FinishStretch(circuit, state, 400, 84));
    EXPECT_EQ(state.DragState, 2);
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 1\n"
                                    "wire 1 live 80,80 400,80\n"
                                    "NumElements 2\n"
                                    "element 1 kind 6 10 at 160,80\n"
                                    "element 2 kind 3 5 at 320,80\n"
                                    "NumNodes 0\n");
}

TEST(StretchTool, AWireTurnedOntoTheOtherAxisTurnsItsDevicesAndAPointIsRefused) {
    Circuit circuit;
    AddWire(circuit, 80, 80, 240, 80);
    AddElement(circuit, kSourceRight, 1, 160, 80);
    EditorState state;
    ASSERT_TRUE(BeginStretch(circuit, state, 80, 80));
    EXPECT_EQ(state.DragState, 4);
    EXPECT_FALSE(FinishStretch(circuit, state, 240, 80));
    EXPECT_EQ(state.DragState, 1);
    ASSERT_TRUE(BeginStretch(circuit, state, 80, 80));
    EXPECT_TRUE(FinishStretch(circuit, state, 240, 240));
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 1\n"
                                    "wire 1 live 240,240 240,80\n"
                                    "NumElements 1\n"
                                    "element 1 kind 7 1 at 240,160\n"
                                    "NumNodes 0\n");
    EXPECT_EQ(state.DragState, 1);
}

// Found by the editor_events fuzz target: shrinking a wire pushed the devices it carries
// onto each other and into its ends.
TEST(StretchTool, AStretchThatWouldCrowdTheDevicesOfItsWireIsRefusedWhole) {
    Circuit circuit;
    AddWire(circuit, 80, 80, 240, 80);
    AddElement(circuit, kResistorHorizontal, 10, 120, 80); // a quarter along
    AddElement(circuit, kBatteryLeft, 5, 160, 80);         // half way
    AddWire(circuit, 400, 40, 400, 120);
    AddElement(circuit, kResistorVertical, 20, 400, 80); // on another wire
    const std::string before = DumpCircuit(circuit);
    EditorState state;
    ASSERT_TRUE(BeginStretch(circuit, state, 240, 80));
    EXPECT_FALSE(FinishStretch(circuit, state, 220, 80)); // 35 units between the two
    EXPECT_EQ(state.DragState, 2);
    ASSERT_TRUE(BeginStretch(circuit, state, 80, 80));
    EXPECT_FALSE(FinishStretch(circuit, state, 168, 80)); // the resistor 18 units from the end
    ASSERT_TRUE(BeginStretch(circuit, state, 80, 80));
    EXPECT_FALSE(FinishStretch(circuit, state, 480, 80)); // the resistor onto the third device
    EXPECT_EQ(DumpCircuit(circuit), before);
    ASSERT_TRUE(BeginStretch(circuit, state, 80, 80));
    EXPECT_TRUE(FinishStretch(circuit, state, 16, 80));
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 2\n"
                                    "wire 1 live 16,80 240,80\n"
                                    "wire 2 live 400,40 400,120\n"
                                    "NumElements 3\n"
                                    "element 1 kind 6 10 at 72,80\n"
                                    "element 2 kind 3 5 at 128,80\n"
                                    "element 3 kind 5 20 at 400,80\n"
                                    "NumNodes 0\n");
}

TEST(StretchTool, ACarriedDeviceMustStayMoreThanTwentyUnitsFromTheNearEnd) {
    Circuit circuit;
    AddWire(circuit, 80, 80, 240, 80);
    AddElement(circuit, kResistorHorizontal, 10, 120, 80); // a quarter along
    EditorState state;
    ASSERT_TRUE(BeginStretch(circuit, state, 80, 80));
    EXPECT_FALSE(FinishStretch(circuit, state, 160, 80)); // exactly 20 from the end
    ASSERT_TRUE(BeginStretch(circuit, state, 80, 80));
    EXPECT_TRUE(FinishStretch(circuit, state, 152, 80)); // 22 from the end
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 1\n"
                                    "wire 1 live 152,80 240,80\n"
                                    "NumElements 1\n"
                                    "element 1 kind 6 10 at 174,80\n"
                                    "NumNodes 0\n");
}

TEST(EraseTool, ErasingAWireTakesItsDevicesAndUndoBringsAllBackOnce) {
    Circuit circuit = Square();
    AddElement(circuit, kBatteryLeft, 12, 120, 80);
    AddElement(circuit, kResistorHorizontal, 470, 200, 80);
    AddElement(circuit, kResistorVertical, 100, 240, 160);
    EditorState state;
    SelectTool(state, kEraseTool);
    EXPECT_FALSE(EraseWireAt(circuit, state, 300, 300));
    EXPECT_EQ(state.UndoAvailable, 0);
    ASSERT_TRUE(EraseWireAt(circuit, state, 151, 81));
    EXPECT_EQ(CountLiveWires(circuit), 4);
    EXPECT_EQ(CountLiveElements(circuit), 1);
    EXPECT_EQ(state.UndoAvailable, 1);
    EXPECT_TRUE(UndoErase(circuit, state));
    EXPECT_FALSE(UndoErase(circuit, state));
    EXPECT_EQ(state.CurrentTool, kEraseTool);
    // The dump carries the undo marks; compare the live tables only.
    Circuit expected = Square();
    AddElement(expected, kBatteryLeft, 12, 120, 80);
    AddElement(expected, kResistorHorizontal, 470, 200, 80);
    AddElement(expected, kResistorVertical, 100, 240, 160);
    ClearUndoMemory(circuit);
    EXPECT_EQ(DumpCircuit(circuit), DumpCircuit(expected));
}

TEST(EraseTool, OnlyTheLatestEraseCanBeUndoneAndChoosingAToolEndsTheChance) {
    Circuit circuit = Square();
    AddElement(circuit, kBatteryLeft, 12, 120, 80);
    AddElement(circuit, kResistorVertical, 100, 240, 160);
    EditorState state;
    EraseDevice(circuit, state, 1);
    EraseDevice(circuit, state, 2);
    EXPECT_TRUE(UndoErase(circuit, state));
    EXPECT_EQ(circuit.Elements[1].Kind, kEmpty);
    EXPECT_EQ(circuit.Elements[2].Kind, kResistorVertical);
    EraseDevice(circuit, state, 2);
    SelectTool(state, kWireTool);
    EXPECT_FALSE(UndoErase(circuit, state));
    EXPECT_EQ(circuit.Elements[2].Kind, kEmpty);
    SelectTool(state, kUndoEraseButton);
    EXPECT_EQ(state.CurrentTool, kWireTool);
}

TEST(EraseTool, AfterARefusedNextUndoBringsBackAWholeEraseOrNothing) {
    // Wire 1 holds the battery; "Next >" is refused (the square has no node) and its
    // clean-up renumbers the wires.
    auto drawn = [] {
        Circuit circuit = Square();
        AddElement(circuit, kBatteryLeft, 12, 160, 80);
        AddElement(circuit, kResistorVertical, 100, 240, 160);
        return circuit;
    };
    struct Case {
        const char* what;
        bool eraseWire; // the top wire with its battery, or the resistor alone
        std::string afterUndo;
    };
    const Case cases[] = {
        {"a wire and its battery", true, "undo unavailable; wires 4, devices 1"},
        {"a device alone", false, "undone; wires 5, devices 2"},
    };
    for (const Case& c : cases) {
        Workspace ws;
        ws.circuit = drawn();
        EditorState state;
        SelectTool(state, kEraseTool);
        if (c.eraseWire) {
            ASSERT_TRUE(EraseWireAt(ws.circuit, state, 120, 80));
        } else {
            EraseDevice(ws.circuit, state, 2);
        }
        ScriptedPrompts prompts;
        ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Refused);
        MatchUndoToMemory(ws.circuit, state);
        const bool offered = state.UndoAvailable == 1;
        const bool undone = UndoErase(ws.circuit, state);
        const std::string outcome = std::string(offered && undone     ? "undone"
                                                : !offered && !undone ? "undo unavailable"
                                                                      : "inconsistent") +
                                    "; wires " + std::to_string(CountLiveWires(ws.circuit)) +
                                    ", devices " + std::to_string(CountLiveElements(ws.circuit));
        EXPECT_EQ(outcome, c.afterUndo) << c.what;
    }
}

TEST(CenterTheCircuit, TheDrawingMovesByWholeGridStepsToTheMiddle) {
    Circuit circuit;
    AddWire(circuit, 16, 16, 96, 16);
    AddWire(circuit, 16, 16, 16, 64);
    AddElement(circuit, kBatteryLeft, 1, 56, 16);
    circuit.NumNodes = 1;
    circuit.NodeLabels[1].X = 16;
    circuit.NodeLabels[1].Y = 16;
    // dx = (500 - 80) / 2 - 16 = 194 -> 192; dy = 40 + (300 - 48) / 2 - 16 = 150 -> 152
    CenterCircuit(circuit, 500, 40, 300);
    EXPECT_EQ(DumpCircuit(circuit), "NumWires 2\n"
                                    "wire 1 live 208,168 288,168\n"
                                    "wire 2 live 208,168 208,216\n"
                                    "NumElements 1\n"
                                    "element 1 kind 3 1 at 248,168\n"
                                    "NumNodes 1\n"
                                    "node 1 \"\" at 208,168\n");
    Circuit empty;
    empty.NumNodes = 1;
    CenterCircuit(empty, 500, 40, 300);
    EXPECT_EQ(empty.NodeLabels[1].X, 0);
}

TEST(HitTests, AClickOnAWireEndOrItsLengthHitsItAndAZeroLengthWireIsSafe) {
    Circuit circuit;
    AddWire(circuit, 80, 80, 80, 80);
    AddWire(circuit, 240, 160, 240, 80);
    EXPECT_EQ(WireHit(circuit, 80, 80), 1);
    EXPECT_EQ(WireHit(circuit, 240, 80), 2);
    EXPECT_EQ(WireHit(circuit, 240, 120), 2);
    EXPECT_EQ(WireHit(circuit, 240, 168), 0);
    AddElement(circuit, kResistorVertical, 1, 240, 120);
    EXPECT_EQ(ElementAt(circuit, 224, 104), 1);
    EXPECT_EQ(ElementAt(circuit, 256, 120), 0);
}

} // namespace
} // namespace ampora
