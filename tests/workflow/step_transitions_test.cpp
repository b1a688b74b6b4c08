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

#include <algorithm>
#include <sstream>

namespace ampora {
namespace {

using test::W;

// What "Next >" on step 1 and then, once in step 2, AutoName with pattern 2 and "Next >" make
// of a drawing, as one text: the message of a refusal, or the node names and every warning.
std::string NextAutoNameNext(const Circuit& drawn) {
    Workspace ws;
    ws.Circuit = drawn;
    ws.Preferences.AutoNamePattern = 2;
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
    for (const DrawingWarning& warning : ws.Topology.Warnings) {
        text += "warning " + std::to_string(warning.slot) + ": " + warning.text + "\n";
    }
    if (!AutoName(ws, prompts) || LeaveStep2(ws, prompts) != TransitionResult::Entered) {
        return text + "not solved in step " + std::to_string(ws.Step) + ": " +
               (prompts.messages.empty() ? "" : prompts.messages.back());
    }
    text += "solved:";
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        text += " " + ws.Circuit.NodeLabels[slot].Name;
    }
    return text;
}

// Each drawing of tests/data/workflow/ (named for what it shows) solved or refused with its
// reason, misread devices named. Among them: ladders of 14 and 20 nodes, named by location
// with the slots taking the rungs in turn, and one node more; a comb whose 99 teeth split
// its back into more wire pieces than the table holds; batteries in parallel equal, apart
// by a fifth of a percent, or facing each other; circuits that float or hang on sources.
TEST(LeavingSteps, EachCircuitIsSolvedOrRefusedWithItsReasonAndMisreadDevicesAreNamed) {
    const auto files = test::FilesIn(test::DataDir() / "workflow", ".amq");
    std::string dump;
    for (const std::filesystem::path& file : files) {
        Circuit drawn;
        ASSERT_TRUE(LoadFromIniFile(drawn, file.string()).complete) << file;
        std::istringstream outcome(NextAutoNameNext(drawn));
        dump += file.filename().string() + "\n";
        for (std::string line; std::getline(outcome, line);) {
            dump += "    " + line + "\n";
        }
    }
    EXPECT_GE(files.size(), 20u);
    EXPECT_EQ(dump, test::ExpectedText("workflow/leaving_steps.txt", dump));
}

TEST(LeavingStep1, NamesSurviveGoingBackUnlessTheirNodeMoved) {
    Workspace ws;
    ws.Circuit =
        test::ThreeBranches(kResistorVertical, 10, kResistorVertical, 10, kResistorVertical, 10);
    test::ScriptedPrompts prompts;
    ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered);
    ASSERT_TRUE(AutoName(ws, prompts));
    BackToStep1(ws);
    ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered);
    EXPECT_EQ(ws.Circuit.NodeLabels[1].Name, "V1");
    EXPECT_EQ(ws.Circuit.NodeLabels[2].Name, "0");

    BackToStep1(ws);
    // Redraw with the top node 40 units higher; the bottom node stays where it was.
    EraseWholeCircuit(ws.Circuit);
    test::Draw(ws.Circuit, {{80, -40, 0, -40},
                            {0, -40, 0, 160},
                            {0, 160, 80, 160},
                            {80, -40, 80, 160},
                            {80, -40, 160, -40},
                            {160, -40, 160, 160},
                            {160, 160, 80, 160}});
    ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered) << test::DumpCircuit(ws.Circuit);
    EXPECT_EQ(ws.Circuit.NodeLabels[1].Name, "[ ]");
    EXPECT_EQ(ws.Circuit.NodeLabels[1].Y, -40);
    EXPECT_EQ(ws.Circuit.NodeLabels[2].Name, "0");
    EXPECT_TRUE(prompts.messages.empty());
}

TEST(LeavingStep2, AFailedMoveKeepsTheNamesAndCanBeRetriedAfterRenaming) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("voltage_divider.amq", "\"V1\"", "\"0\""), 0);
    EXPECT_EQ(session.ws.Step, 2);
    EXPECT_EQ(session.prompts.messages.at(0),
              "You can only have one reference node named 0.  You must rename the other ones.");
    EXPECT_EQ(session.ws.Circuit.NodeLabels[1].Name, "0");
    session.ws.Circuit.NodeLabels[1].Name = "Vout";
    EXPECT_EQ(LeaveStep2(session.ws, session.prompts), TransitionResult::Entered);
    EXPECT_EQ(session.ws.Step, 3);
    EXPECT_EQ(session.ws.Circuit.NodeLabels[1].Voltage, 6);
}

TEST(LeavingStep1, EveryExampleEntersStep2WithTheNamesSavedInItsFile) {
    for (const auto& file : test::ExampleFiles()) {
        Workspace ws;
        ASSERT_TRUE(LoadFromIniFile(ws.Circuit, file.string()).complete) << file;
        const Circuit saved = ws.Circuit;
        test::ScriptedPrompts prompts;
        EXPECT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered) << file;
        ASSERT_EQ(ws.Circuit.NumNodes, saved.NumNodes) << file;
        for (int slot = 1; slot <= saved.NumNodes; ++slot) {
            EXPECT_EQ(ws.Circuit.NodeLabels[slot].Name, saved.NodeLabels[slot].Name) << file;
            EXPECT_EQ(ws.Circuit.NodeLabels[slot].X, saved.NodeLabels[slot].X) << file;
            EXPECT_EQ(ws.Circuit.NodeLabels[slot].Y, saved.NodeLabels[slot].Y) << file;
        }
        EXPECT_TRUE(ws.Topology.Warnings.empty()) << file << ": " << ws.Topology.Warnings[0].text;
        EXPECT_TRUE(CheckNamesOnLeavingStep2(ws, prompts)) << file;
    }
}

} // namespace
} // namespace ampora
