#include "analysis/node_naming.h"
#include "analysis/step_transitions.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/circuit_dump.h"
#include "support/drawn_circuit.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"

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

TEST(LeavingStep1, EachRefusalShowsItsOwnMessageAndStaysInStep1) {
    struct Case {
        const char* what;
        bool threeBranches;
        std::vector<W> wires;
        std::string outcome;
    };
    const std::vector<W> square = {{0, 0, 80, 0}, {80, 0, 80, 80}, {80, 80, 0, 80}, {0, 80, 0, 0}};
    const std::string loose = "refused in step 1: You have branches that lead nowhere and current "
                              "cannot flow in them.  You must go back and delete them.";
    const std::vector<Case> cases = {
        {"nothing drawn", false, {}, "stopped in step 1"},
        {"a lone wire",
         false,
         {{0, 0, 80, 0}},
         "refused in step 1: You can't do nodal analysis since there are no nodes."},
        {"a T", false, {{0, 0, 160, 0}, {80, 0, 80, 80}}, loose},
        {"a rectangle", false, square,
         "refused in step 1: You can't do nodal analysis since there are no nodes."},
        {"a loop and a wire leading nowhere from a node",
         true,
         {{400, 0, 480, 0},
          {480, 0, 480, 80},
          {480, 80, 400, 80},
          {400, 80, 400, 0},
          {160, 40, 240, 40}},
         loose},
        {"a loop beside a circuit with nodes",
         true,
         {{400, 0, 480, 0}, {480, 0, 480, 80}, {480, 80, 400, 80}, {400, 80, 400, 0}},
         "refused in step 1: You have simple current loops containing no nodes.  They should be "
         "analyzed with Ohm's law, not nodal analysis.  You must go back and delete them."},
        {"two current sources on one branch",
         true,
         {},
         "refused in step 1: You have two current sources in the same branch.  You must go back "
         "and delete one of them."},
    };
    for (const Case& c : cases) {
        Workspace ws;
        if (c.threeBranches) {
            DrawThreeBranches(ws);
        }
        test::Draw(ws.circuit, c.wires);
        if (c.wires.empty() && c.threeBranches) {
            AddElement(ws.circuit, kSourceUp, 1, 160, 40);
            AddElement(ws.circuit, kSourceUp, 1, 160, 120);
        }
        const Outcome out = LeaveStep1With(ws);
        std::string outcome =
            (out.result == TransitionResult::Refused ? "refused in step " : "stopped in step ") +
            std::to_string(out.step);
        for (const std::string& message : out.messages) {
            outcome += ": " + message;
        }
        EXPECT_EQ(outcome, c.outcome) << c.what;
    }
}

TEST(LeavingStep1, TablesThatOverflowEndTheMoveQuietlyWithTheDrawingIntact) {
    Workspace ws;
    // A ladder of 14 rungs has 24 nodes, more than the node table holds.
    AddWire(ws.circuit, 0, 0, 520, 0);
    AddWire(ws.circuit, 0, 80, 520, 80);
    for (int k = 0; k < 14; ++k) {
        AddWire(ws.circuit, 40.0f * static_cast<float>(k), 0, 40.0f * static_cast<float>(k), 80);
    }
    const Outcome out = LeaveStep1With(ws);
    EXPECT_EQ(out.result, TransitionResult::Stopped);
    EXPECT_EQ(out.step, 1);
    EXPECT_TRUE(out.messages.empty());
    for (int slot = 1; slot <= ws.circuit.NumWires; ++slot) {
        EXPECT_NE(ws.circuit.Wires[slot].Used, 0) << slot;
    }

    Workspace scattered; // 21 separate wires: 42 loose ends, more than their table holds
    for (int k = 0; k < 21; ++k) {
        AddWire(scattered.circuit, 0, 16.0f * static_cast<float>(k), 80,
                16.0f * static_cast<float>(k));
    }
    const Outcome quiet = LeaveStep1With(scattered);
    EXPECT_EQ(quiet.result, TransitionResult::Stopped);
    EXPECT_TRUE(quiet.messages.empty());
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
        test::ScriptedPrompts prompts;
        EXPECT_TRUE(CheckNamesOnLeavingStep2(ws, prompts)) << file;
    }
}

} // namespace
} // namespace ampora
