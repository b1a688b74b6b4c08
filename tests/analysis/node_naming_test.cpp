#include "analysis/circuit_checks.h"
#include "analysis/node_naming.h"
#include "support/case_file.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace ampora {
namespace {

// Nodes written "x y name | x y name ...", in slot order.
Workspace WithNodes(const std::string& nodes, std::int16_t pattern = 1) {
    Workspace workspace;
    workspace.Step = 2;
    workspace.Preferences.AutoNamePattern = pattern;
    for (std::size_t at = 0; at < nodes.size();) {
        const std::size_t end = std::min(nodes.find(" | ", at), nodes.size());
        NodeLabel& node = workspace.Circuit.NodeLabels[++workspace.Circuit.NumNodes];
        std::istringstream fields(nodes.substr(at, end - at));
        fields >> node.X >> node.Y >> std::ws;
        std::getline(fields, node.Name);
        at = end + 3;
    }
    return workspace;
}

// The names in slot order, the order of the last check with its inverse, and the messages.
std::string Outcome(const Workspace& ws, bool done, const test::ScriptedPrompts& prompts) {
    std::string out = done ? "done:" : "refused:";
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        out += " " + ws.Circuit.NodeLabels[slot].Name;
    }
    out += " | order/rank";
    for (int k = 1; k <= ws.Circuit.NumNodes; ++k) {
        out += " " + std::to_string(ws.Naming.NodeOrder[k]) + "/" +
               std::to_string(ws.Naming.NodeRank[k]);
    }
    out += " reference " + std::to_string(ws.Naming.HasReference);
    for (const std::string& message : prompts.messages) {
        out += "\n" + message;
    }
    return out;
}

// The outcomes, worked by hand, are in tests/data/analysis/node_naming.txt.
TEST(NodeNaming, AutoNameAndTheNameCheckOrderRenameAndRefuseAsWorkedByHand) {
    const auto play = [](const std::string&, const std::vector<std::string>& inputs) {
        const std::string& line = inputs.at(0); // "nodes autoname 1: ...", "nodes by name: ..."
        const std::size_t colon = line.find(": ");
        const std::string mode = line.substr(6, colon - 6);
        Workspace ws =
            WithNodes(line.substr(colon + 2), static_cast<std::int16_t>(mode.back() - '0'));
        test::ScriptedPrompts prompts;
        const bool done = mode.starts_with("autoname")
                              ? AutoName(ws, prompts)
                              : CheckNames(ws.Circuit, ws.Naming,
                                           mode == "by location" ? NodeOrdering::ByLocation
                                                                 : NodeOrdering::ByName,
                                           prompts);
        return Outcome(ws, done, prompts) + "\n";
    };
    const std::string dump = test::ReplayCases("analysis/node_naming.txt", {"nodes "}, play);
    ASSERT_GT(dump.size(), 2000u);
    EXPECT_EQ(dump, test::ExpectedText("analysis/node_naming.txt", dump));
    EXPECT_EQ(LocationKey(80, 240), "02400080");
    EXPECT_EQ(LocationKey(80.5f, 239.5f), "02400080"); // ties to even
    EXPECT_EQ(LocationKey(-8, 12345), "12345-0008");
    EXPECT_EQ(LocationKey(-0.25f, 0), "00000000");
    EXPECT_EQ(LocationKey(9999.4f, 9999.5f), "100009999"); // the first five-digit value
}

TEST(NodeNaming, RenamingAsksWithTheOldNameTakesTheAnswerAsTypedAndKeepsTheNameOnEmpty) {
    Workspace ws = WithNodes("0 0 V1 | 0 16 0");
    test::ScriptedPrompts prompts;
    prompts.textAnswers = {" Vout ", ""};
    EXPECT_TRUE(RenameNode(ws, prompts, 1, 10, 20));
    EXPECT_FALSE(RenameNode(ws, prompts, 2, 10, 20));
    EXPECT_EQ(ws.Circuit.NodeLabels[1].Name + "|" + ws.Circuit.NodeLabels[2].Name, " Vout |0");
    EXPECT_EQ(prompts.questions,
              (std::vector<std::string>{"Enter new name: [V1]", "Enter new name: [0]"}));

    ws.Step = 1; // clicks on labels do nothing outside step 2
    prompts.textAnswers = {"X"};
    EXPECT_FALSE(RenameNode(ws, prompts, 1, 10, 20));
    EXPECT_FALSE(RenameNode(ws, prompts, 3, 10, 20));
    EXPECT_EQ(prompts.questions.size(), 2u);

    ClearNames(ws.Circuit); // every node unnamed, the reference too
    EXPECT_EQ(ws.Circuit.NodeLabels[1].Name + "|" + ws.Circuit.NodeLabels[2].Name, "[ ]|[ ]");
}

} // namespace
} // namespace ampora
