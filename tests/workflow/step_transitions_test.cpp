#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/circuit_dump.h"
#include "support/drawn_circuit.h"
#include "support/scripted_prompts.h"
#include "support/solve_session.h"
#include "support/test_files.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::W;

// Two nodes joined by three branches, 10 ohms on each.
void DrawThreeBranches(Workspace& workspace) {
    workspace.circuit =
        test::ThreeBranches(kResistorVertical, 10, kResistorVertical, 10, kResistorVertical, 10);
}

struct Outcome {
    TransitionResult result;
    int step;
    std::vector<std::string> messages;
};

Outcome LeaveStep1With(Workspace& workspace) {
    test::ScriptedPrompts prompts;
    const TransitionResult result = LeaveStep1(workspace, prompts);
    return Outcome{result, workspace.Step, prompts.messages};
}

// Two rails joined by rungs 80 units apart, a 12 V battery on the first rung and a resistor
// of 1, 2, 3 ... ohms on each other one: every inner rung makes two nodes.
std::vector<W> LadderWires(int rungs) {
    const float right = 80.0f * static_cast<float>(rungs - 1);
    std::vector<W> wires = {{0, 0, right, 0}, {0, 160, right, 160}};
    for (int k = 0; k < rungs; ++k) {
        wires.push_back({80.0f * static_cast<float>(k), 0, 80.0f * static_cast<float>(k), 160});
    }
    return wires;
}

std::vector<test::E> LadderDevices(int rungs) {
    std::vector<test::E> devices = {{kBatteryUp, 12, 0, 80}};
    for (int k = 1; k < rungs; ++k) {
        devices.push_back(
            {kResistorVertical, static_cast<float>(k), 80.0f * static_cast<float>(k), 80});
    }
    return devices;
}

// What "Next >" on step 1 and then, once in step 2, AutoName with pattern 2 and "Next >" make
// of a drawing, as one text: the message of a refusal, or the node names and every warning.
std::string NextAutoNameNext(const Circuit& drawn) {
    Workspace ws;
    ws.circuit = drawn;
    ws.preferences.AutoNamePattern = 2;
    test::ScriptedPrompts prompts;
    const TransitionResult left = LeaveStep1(ws, prompts);
    if (left != TransitionResult::Entered) {
        std::string text = std::string(left == TransitionResult::Refused ? "refused" : "stopped") +
                           " in step " + std::to_string(ws.Step);
        for (const std::string& message : prompts.messages) {
            text += ": " + message;
        }
        return text;
    }
    std::string text;
    for (const DrawingWarning& warning : ws.topology.Warnings) {
        text += "warning " + std::to_string(warning.slot) + ": " + warning.text + "\n";
    }
    if (!AutoName(ws, prompts) || LeaveStep2(ws, prompts) != TransitionResult::Entered) {
        return text + "not solved in step " + std::to_string(ws.Step) + ": " +
               (prompts.messages.empty() ? "" : prompts.messages.back());
    }
    text += "solved:";
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        text += " " + ws.circuit.NodeLabels[slot].Name;
    }
    return text;
}

TEST(LeavingSteps, EachCircuitIsSolvedOrRefusedWithItsReasonAndMisreadDevicesAreNamed) {
    std::vector<W> ladder21 = LadderWires(12); // 20 nodes, and a hat over rungs 5 to 7 adds one
    for (const W& w : std::vector<W>{
             {320, 0, 320, -80}, {320, -80, 480, -80}, {480, -80, 480, 0}, {400, -80, 400, 0}}) {
        ladder21.push_back(w);
    }
    std::vector<W> looseEnds; // 11 lone wires beside a circuit that has nodes
    for (int k = 0; k < 11; ++k) {
        looseEnds.push_back(
            {400, 16.0f * static_cast<float>(k), 480, 16.0f * static_cast<float>(k)});
    }
    std::vector<W> comb = {{0, 0, 16 * 99, 0}}; // 99 teeth split the back into 98 more wires
    for (int k = 1; k <= 99; ++k) {
        comb.push_back(
            {16.0f * static_cast<float>(k) - 8, 0, 16.0f * static_cast<float>(k) - 8, 40});
    }
    const auto With = [](Circuit c, const std::vector<W>& wires,
                         const std::vector<test::E>& devices) {
        test::Draw(c, wires, devices);
        return c;
    };
    const Circuit divider =
        test::ThreeBranches(kBatteryUp, 12, kResistorVertical, 10, kResistorVertical, 10);
    const Circuit threeResistors =
        test::ThreeBranches(kResistorVertical, 10, kResistorVertical, 10, kResistorVertical, 10);
    const std::vector<W> square = {{0, 0, 80, 0}, {80, 0, 80, 80}, {80, 80, 0, 80}, {0, 80, 0, 0}};
    const std::vector<W> loopAside = {
        {400, 0, 480, 0}, {480, 0, 480, 80}, {480, 80, 400, 80}, {400, 80, 400, 0}};
    const std::string loose = "refused in step 1: You have branches that lead nowhere and current "
                              "cannot flow in them.  You must go back and delete them.";
    const std::string different = "not solved in step 2: You have a supernode with different "
                                  "voltages in parallel, which is a contradiction.  You must go "
                                  "back and correct this situation.";
    const std::string cannotSolve = "not solved in step 2: Error:  The program can't solve this "
                                    "circuit.  Go back and look for short circuits or other error "
                                    "conditions.";
    const auto batteries = [](std::int16_t middle, float volts) {
        return test::ThreeBranches(kBatteryUp, 5, middle, volts, kResistorVertical, 10);
    };
    Circuit shorted = batteries(kResistorVertical, 10); // the middle branch a bare wire
    EraseElementSlot(shorted, 2);
    // The divider twice, side by side: only one of them has the reference.
    std::vector<W> dividers;
    std::vector<test::E> dividerDevices;
    for (const float dx : {0.0f, 480.0f}) {
        for (const W& w : std::vector<W>{{80, 80, 240, 80},
                                         {240, 80, 400, 80},
                                         {80, 80, 80, 240},
                                         {240, 80, 240, 240},
                                         {400, 80, 400, 240},
                                         {80, 240, 240, 240},
                                         {240, 240, 400, 240}}) {
            dividers.push_back({w.x1 + dx, w.y1, w.x2 + dx, w.y2});
        }
        for (const test::E& e : std::vector<test::E>{{kResistorHorizontal, 1000, 160, 80},
                                                     {kBatteryUp, 12, 80, 160},
                                                     {kResistorVertical, 2000, 240, 160},
                                                     {kResistorVertical, 2000, 400, 160}}) {
            dividerDevices.push_back({e.kind, e.value, e.x + dx, e.y});
        }
    }
    const std::string noNodes =
        "refused in step 1: You can't do nodal analysis since there are no nodes.";
    struct Case {
        const char* what;
        Circuit drawn;
        std::string outcome;
    };
    const std::vector<Case> cases = {
        {"nothing drawn", Circuit{}, "stopped in step 1"},
        {"a lone wire", test::Drawn({{0, 0, 80, 0}}), noNodes},
        {"a T", test::Drawn({{0, 0, 160, 0}, {80, 0, 80, 80}}), loose},
        {"a rectangle", test::Drawn(square), noNodes},
        {"a loop and a wire leading nowhere from a node",
         With(With(threeResistors, loopAside, {}), {{160, 40, 240, 40}}, {}), loose},
        {"a loop beside a circuit with nodes", With(threeResistors, loopAside, {}),
         "refused in step 1: You have simple current loops containing no nodes.  They should be "
         "analyzed with Ohm's law, not nodal analysis.  You must go back and delete them."},
        {"two current sources on one branch",
         With(threeResistors, {}, {{kSourceUp, 1, 160, 40}, {kSourceUp, 1, 160, 120}}),
         "refused in step 1: You have two current sources in the same branch.  You must go back "
         "and delete one of them."},
        {"a ladder of 9 rungs, 14 nodes", test::Drawn(LadderWires(9), LadderDevices(9)),
         // Named by location, top row first; the nodes' slots take the rungs in turn.
         "solved: A H B I C J D K E L F M G 0"},
        {"a ladder of 12 rungs, 20 nodes", test::Drawn(LadderWires(12), LadderDevices(12)),
         "solved: A K B L C M D N E O F P G Q H R I S J 0"},
        {"21 nodes", test::Drawn(ladder21, LadderDevices(12)),
         "refused in step 1: You have 21 nodes, but the program can analyze at most 20.  You must "
         "go back "
         "and remove some of them."},
        {"22 loose ends", With(divider, looseEnds, {}), loose},
        {"more wire pieces than the wire table holds", test::Drawn(comb),
         "refused in step 1: Your circuit needs more than 100 wire pieces once its wires are "
         "divided where "
         "they meet, which is more than the program can handle.  You must go back and simplify "
         "it."},
        {"a resistor on a node", With(divider, {}, {{kResistorHorizontal, 5, 80, 0}}),
         "warning 4: The resistor of 5 ohms at (80, 0) lies where wires meet, so it belongs to no "
         "branch and is treated as wire.\nsolved: A 0"},
        {"a battery on a corner", With(divider, {}, {{kBatteryRight, 1.5, 160, 160}}),
         "warning 4: The battery of 1.5 V at (160, 160) lies where wires meet, so it belongs to "
         "no branch and is treated as wire.\nsolved: A 0"},
        {"a resistor where two wires cross",
         With(test::ThreeBranches(kResistorVertical, 10, kBatteryUp, 12, kResistorVertical, 10),
              {{0, 120, 160, 120}},
              {{kResistorHorizontal, 20, 80, 120},
               {kResistorHorizontal, 30, 40, 160},
               {kResistorHorizontal, 40, 120, 160}}),
         "warning 4: The resistor of 20 ohms at (80, 120) lies where two wires cross and is "
         "counted in both.\nsolved: A B 0 C"},
        {"a current source of 0 A across the lower resistor of a divider",
         test::Drawn({{0, 0, 0, 160},
                      {0, 0, 80, 0},
                      {80, 0, 80, 160},
                      {0, 160, 80, 160},
                      {80, 80, 160, 80},
                      {160, 80, 160, 160},
                      {160, 160, 80, 160}},
                     {{kBatteryUp, 12, 0, 80},
                      {kResistorVertical, 1000, 80, 40},
                      {kResistorVertical, 2000, 80, 120},
                      {kSourceUp, 0, 160, 120}}),
         "warning 4: The current source of 0 A at (160, 120): a current source of 0 A is analysed "
         "as a plain wire; give it a value or erase it.\nsolved: A 0"},
        {"two equal batteries in parallel", batteries(kBatteryUp, 5),
         "not solved in step 2: You have a supernode with identical branches in parallel, which "
         "the program can't handle.  You must go back and delete one of them."},
        {"batteries of 5 V and 6 V in parallel", batteries(kBatteryUp, 6), different},
        {"equal batteries pointing against each other", batteries(kBatteryDown, 5), different},
        {"batteries a fifth of a percent apart", batteries(kBatteryUp, 5.01f), different},
        {"a battery shorted by a bare wire", shorted, different},
        {"a node reached only through sources",
         test::ThreeBranches(kSourceUp, 1, kSourceDown, 1, kSourceUp, 2), cannotSolve},
        {"two circuits floating against each other", test::Drawn(dividers, dividerDevices),
         cannotSolve},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(NextAutoNameNext(c.drawn), c.outcome) << c.what;
    }
}

TEST(LeavingStep1, NamesSurviveGoingBackUnlessTheirNodeMoved) {
    Workspace ws;
    DrawThreeBranches(ws);
    test::ScriptedPrompts prompts;
    ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered);
    ASSERT_TRUE(AutoName(ws, prompts));
    BackToStep1(ws);
    ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered);
    EXPECT_EQ(ws.circuit.NodeLabels[1].Name, "V1");
    EXPECT_EQ(ws.circuit.NodeLabels[2].Name, "0");

    BackToStep1(ws);
    // Redraw with the top node 40 units higher; the bottom node stays where it was.
    EraseWholeCircuit(ws.circuit);
    test::Draw(ws.circuit, {{80, -40, 0, -40},
                            {0, -40, 0, 160},
                            {0, 160, 80, 160},
                            {80, -40, 80, 160},
                            {80, -40, 160, -40},
                            {160, -40, 160, 160},
                            {160, 160, 80, 160}});
    ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered) << test::DumpCircuit(ws.circuit);
    EXPECT_EQ(ws.circuit.NodeLabels[1].Name, "[ ]");
    EXPECT_EQ(ws.circuit.NodeLabels[1].Y, -40);
    EXPECT_EQ(ws.circuit.NodeLabels[2].Name, "0");
    EXPECT_TRUE(prompts.messages.empty());
}

TEST(LeavingStep2, AFailedMoveKeepsTheNamesAndCanBeRetriedAfterRenaming) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("voltage_divider.amq", "\"V1\"", "\"0\""), 0);
    EXPECT_EQ(session.ws.Step, 2);
    EXPECT_EQ(session.prompts.messages.at(0),
              "You can only have one reference node named 0.  You must rename the other ones.");
    EXPECT_EQ(session.ws.circuit.NodeLabels[1].Name, "0");
    session.ws.circuit.NodeLabels[1].Name = "Vout";
    EXPECT_EQ(LeaveStep2(session.ws, session.prompts), TransitionResult::Entered);
    EXPECT_EQ(session.ws.Step, 3);
    EXPECT_EQ(session.ws.circuit.NodeLabels[1].Voltage, 6);
}

TEST(LeavingStep1, EveryExampleEntersStep2WithTheNamesSavedInItsFile) {
    for (const auto& file : test::ExampleFiles()) {
        Workspace ws;
        ASSERT_TRUE(LoadFromIniFile(ws.circuit, file.string()).complete) << file;
        const Circuit saved = ws.circuit;
        const Outcome out = LeaveStep1With(ws);
        EXPECT_EQ(out.result, TransitionResult::Entered) << file;
        ASSERT_EQ(ws.circuit.NumNodes, saved.NumNodes) << file;
        for (int slot = 1; slot <= saved.NumNodes; ++slot) {
            EXPECT_EQ(ws.circuit.NodeLabels[slot].Name, saved.NodeLabels[slot].Name) << file;
            EXPECT_EQ(ws.circuit.NodeLabels[slot].X, saved.NodeLabels[slot].X) << file;
            EXPECT_EQ(ws.circuit.NodeLabels[slot].Y, saved.NodeLabels[slot].Y) << file;
        }
        EXPECT_TRUE(ws.topology.Warnings.empty()) << file << ": " << ws.topology.Warnings[0].text;
        test::ScriptedPrompts prompts;
        EXPECT_TRUE(CheckNamesOnLeavingStep2(ws, prompts)) << file;
    }
}

} // namespace
} // namespace ampora
