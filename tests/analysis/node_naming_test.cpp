#include "analysis/circuit_checks.h"
#include "analysis/node_naming.h"
#include "support/scripted_prompts.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

struct N {
    float x, y;
    const char* name;
};

Workspace WithNodes(std::initializer_list<N> nodes, std::int16_t pattern = 1) {
    Workspace workspace;
    workspace.Step = 2;
    workspace.preferences.AutoNamePattern = pattern;
    for (const N& n : nodes) {
        NodeLabel& node = workspace.circuit.NodeLabels[++workspace.circuit.NumNodes];
        node.X = n.x;
        node.Y = n.y;
        node.Name = n.name;
    }
    return workspace;
}

// The names in slot order, then the order of the last check and its inverse.
std::string Names(const Workspace& workspace) {
    std::string out;
    for (int slot = 1; slot <= workspace.circuit.NumNodes; ++slot) {
        out += (slot == 1 ? "" : " ") + workspace.circuit.NodeLabels[slot].Name;
    }
    return out;
}

std::string Order(const Workspace& workspace) {
    std::string out = "order";
    for (int k = 1; k <= workspace.circuit.NumNodes; ++k) {
        out += " " + std::to_string(workspace.naming.NodeOrder[k]);
    }
    out += " rank";
    for (int k = 1; k <= workspace.circuit.NumNodes; ++k) {
        out += " " + std::to_string(workspace.naming.NodeRank[k]);
    }
    return out + " reference " + std::to_string(workspace.naming.HasReference);
}

TEST(NodeNaming, AutoNameNamesTopToBottomLeftToRightAndMakesTheLastNodeTheReference) {
    Workspace ws = WithNodes({{400, 240, "[ ]"}, {80, 80, "x"}, {240, 80, "[ ]"}, {80, 240, "0x"}});
    test::ScriptedPrompts prompts;
    ASSERT_TRUE(AutoName(ws, prompts));
    EXPECT_EQ(Names(ws), "0 V1 V2 V3");
    EXPECT_EQ(Order(ws), "order 2 3 4 1 rank 4 1 2 3 reference 0");
    EXPECT_TRUE(prompts.messages.empty());
}

TEST(NodeNaming, AutoNameSkipsAnExistingReferenceAndUsesNoCounterValueForIt) {
    Workspace ws =
        WithNodes({{400, 240, "[ ]"}, {80, 80, "[ ]"}, {240, 80, "[ ]"}, {80, 240, "0"}});
    test::ScriptedPrompts prompts;
    ASSERT_TRUE(AutoName(ws, prompts));
    EXPECT_EQ(Names(ws), "V3 V1 V2 0");
    EXPECT_EQ(Order(ws), "order 2 3 4 1 rank 4 1 2 3 reference -1");
}

TEST(NodeNaming, AutoNameWithTwoReferenceNodesShowsTheMessageAndChangesNothing) {
    Workspace ws = WithNodes({{80, 80, "0"}, {240, 80, "[ ]"}, {80, 240, "0"}});
    test::ScriptedPrompts prompts;
    EXPECT_FALSE(AutoName(ws, prompts));
    EXPECT_EQ(Names(ws), "0 [ ] 0");
    EXPECT_EQ(prompts.messages, std::vector<std::string>{kTwoReferencesMessage});
}

TEST(NodeNaming, TheLetterPatternsRunThroughTwentyNodes) {
    auto twenty = [](std::int16_t pattern) {
        Workspace ws = WithNodes({}, pattern);
        for (int k = 0; k < 20; ++k) {
            NodeLabel& node = ws.circuit.NodeLabels[++ws.circuit.NumNodes];
            node.X = 16.0f * static_cast<float>(19 - k); // slots run right to left
            node.Y = 80;
            node.Name = "[ ]";
        }
        ws.circuit.NodeLabels[20].Name = "0"; // the leftmost
        test::ScriptedPrompts prompts;
        EXPECT_TRUE(AutoName(ws, prompts));
        return Names(ws);
    };
    EXPECT_EQ(twenty(2), "S R Q P O N M L K J I H G F E D C B A 0");
    EXPECT_EQ(twenty(3), "s r q p o n m l k j i h g f e d c b a 0");
    EXPECT_EQ(twenty(1).substr(0, 12), "V19 V18 V17 ");
}

TEST(NodeNaming, LocationKeysAreRoundedFourDigitTextSoFiveDigitCoordinatesSortAsText) {
    EXPECT_EQ(LocationKey(80, 240), "02400080");
    EXPECT_EQ(LocationKey(80.5f, 239.5f), "02400080"); // ties to even
    EXPECT_EQ(LocationKey(-8, 12345), "12345-0008");
    EXPECT_EQ(LocationKey(-0.25f, 0), "00000000");
    EXPECT_EQ(LocationKey(9999.4f, 9999.5f), "100009999"); // the first five-digit value

    Workspace ws = WithNodes({{80, 9000, "a"}, {80, 10000, "b"}, {80, 80, "c"}});
    test::ScriptedPrompts prompts;
    ASSERT_TRUE(CheckNames(ws.circuit, ws.naming, NodeOrdering::ByLocation, prompts));
    EXPECT_EQ(Order(ws), "order 3 2 1 rank 3 2 1 reference 0");
}

TEST(NodeNaming, ByNameOrderComparesCharacterCodesAndKeepsTheSlotOrderOfEqualKeys) {
    Workspace ws = WithNodes(
        {{0, 0, "b"}, {0, 16, "V2"}, {0, 32, "a"}, {0, 48, "V10"}, {0, 64, "B"}, {0, 80, "0"}});
    test::ScriptedPrompts prompts;
    ASSERT_TRUE(CheckNames(ws.circuit, ws.naming, NodeOrdering::ByName, prompts));
    EXPECT_EQ(Order(ws), "order 6 5 4 2 3 1 rank 6 4 5 3 2 1 reference -1");

    // Bytes compare unsigned, so a letter beyond ASCII comes last; a prefix comes first.
    Workspace wide = WithNodes({{0, 0, "\xc3\xa9"}, {0, 16, "z"}, {0, 32, "V1"}, {0, 48, "V"}});
    ASSERT_TRUE(CheckNames(wide.circuit, wide.naming, NodeOrdering::ByName, prompts));
    EXPECT_EQ(Order(wide), "order 4 3 2 1 rank 4 3 2 1 reference 0");
}

TEST(NodeNaming, TheNameCheckRefusesTwoReferencesBeforeDuplicatesAndKeepsTheLastOrder) {
    Workspace ws = WithNodes({{0, 0, "[ ]"}, {0, 16, "V1"}, {0, 32, "0"}});
    test::ScriptedPrompts prompts;
    ASSERT_TRUE(CheckNames(ws.circuit, ws.naming, NodeOrdering::ByName, prompts));
    const std::string passed = Order(ws);
    EXPECT_EQ(passed, "order 3 2 1 rank 3 2 1 reference -1"); // one unnamed node is a name

    ws.circuit.NodeLabels[2].Name = "[ ]";
    EXPECT_FALSE(CheckNames(ws.circuit, ws.naming, NodeOrdering::ByName, prompts));
    ws.circuit.NodeLabels[1].Name = "0";
    ws.circuit.NodeLabels[2].Name = "0";
    EXPECT_FALSE(CheckNames(ws.circuit, ws.naming, NodeOrdering::ByName, prompts));
    ws.circuit.NodeLabels[1].Name = "v";
    ws.circuit.NodeLabels[2].Name = "V";
    EXPECT_TRUE(CheckNames(ws.circuit, ws.naming, NodeOrdering::ByName, prompts));
    EXPECT_EQ(prompts.messages,
              (std::vector<std::string>{kDuplicateNamesMessage, kTwoReferencesMessage}));
    EXPECT_EQ(std::string(kDuplicateNamesMessage),
              "Names must be unique.  You must rename the duplicate ones.");
    EXPECT_EQ(std::string(kTwoReferencesMessage),
              "You can only have one reference node named 0.  You must rename the other ones.");
}

TEST(NodeNaming, ClearNamesUnnamesEveryNodeTheReferenceToo) {
    Workspace ws = WithNodes({{0, 0, "V1"}, {0, 16, "0"}});
    ClearNames(ws.circuit);
    EXPECT_EQ(Names(ws), "[ ] [ ]");
}

TEST(NodeNaming, RenamingAsksWithTheOldNameTakesTheAnswerAsTypedAndKeepsTheNameOnEmpty) {
    Workspace ws = WithNodes({{0, 0, "V1"}, {0, 16, "0"}});
    test::ScriptedPrompts prompts;
    prompts.textAnswers = {" Vout ", ""};
    EXPECT_TRUE(RenameNode(ws, prompts, 1, 10, 20));
    EXPECT_FALSE(RenameNode(ws, prompts, 2, 10, 20));
    EXPECT_EQ(Names(ws), " Vout  0");
    EXPECT_EQ(prompts.questions,
              (std::vector<std::string>{"Enter new name: [V1]", "Enter new name: [0]"}));

    ws.Step = 1; // clicks on labels do nothing outside step 2
    prompts.textAnswers = {"X"};
    EXPECT_FALSE(RenameNode(ws, prompts, 1, 10, 20));
    EXPECT_FALSE(RenameNode(ws, prompts, 3, 10, 20));
    EXPECT_EQ(prompts.questions.size(), 2u);
}

} // namespace
} // namespace ampora
