#include "analysis/circuit_checks.h"
#include "analysis/node_naming.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

struct N {
    float x, y;
    const char* name;
};

Workspace WithNodes(const std::vector<N>& nodes, std::int16_t pattern = 1) {
    Workspace workspace;
    workspace.Step = 2;
    workspace.Preferences.AutoNamePattern = pattern;
    for (const N& n : nodes) {
        NodeLabel& node = workspace.Circuit.NodeLabels[++workspace.Circuit.NumNodes];
        node.X = n.x;
        node.Y = n.y;
        node.Name = n.name;
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

// Twenty nodes in a row, their slots running right to left, the leftmost named 0.
std::vector<N> Twenty() {
    std::vector<N> nodes;
    for (int k = 0; k < 20; ++k) {
        nodes.push_back({16.0f * static_cast<float>(19 - k), 80, k == 19 ? "0" : "[ ]"});
    }
    return nodes;
}

// The outcomes, worked by hand, are in tests/data/analysis/node_naming.txt.
TEST(NodeNaming, AutoNameAndTheNameCheckOrderRenameAndRefuseAsWorkedByHand) {
    // AutoName with the pattern 1 to 3, or the name check alone by location (0) or name (-1).
    const struct {
        const char* what;
        int mode;
        std::vector<N> nodes;
    } cases[] = {
        {"AutoName: top to bottom, left to right, the last node the reference",
         1,
         {{400, 240, "[ ]"}, {80, 80, "x"}, {240, 80, "[ ]"}, {80, 240, "0x"}}},
        {"AutoName skips an existing reference and uses no counter value for it",
         1,
         {{400, 240, "[ ]"}, {80, 80, "[ ]"}, {240, 80, "[ ]"}, {80, 240, "0"}}},
        {"AutoName with two references changes nothing",
         1,
         {{80, 80, "0"}, {240, 80, "[ ]"}, {80, 240, "0"}}},
        {"AutoName, capitals", 2, Twenty()},
        {"AutoName, small letters", 3, Twenty()},
        {"AutoName, V and a number", 1, Twenty()},
        {"by location: five-digit coordinates sort as text",
         0,
         {{80, 9000, "a"}, {80, 10000, "b"}, {80, 80, "c"}}},
        {"by name: character codes, equal keys in slot order",
         -1,
         {{0, 0, "b"}, {0, 16, "V2"}, {0, 32, "a"}, {0, 48, "V10"}, {0, 64, "B"}, {0, 80, "0"}}},
        {"by name: bytes unsigned, a letter beyond ASCII last, a prefix first",
         -1,
         {{0, 0, "\xc3\xa9"}, {0, 16, "z"}, {0, 32, "V1"}, {0, 48, "V"}}},
        {"one unnamed node is a name like any other",
         -1,
         {{0, 0, "[ ]"}, {0, 16, "V1"}, {0, 32, "0"}}},
        {"two unnamed nodes", -1, {{0, 0, "[ ]"}, {0, 16, "[ ]"}, {0, 32, "0"}}},
        {"two references are refused before duplicates",
         -1,
         {{0, 0, "0"}, {0, 16, "0"}, {0, 32, "0"}}},
        {"names differing in case", -1, {{0, 0, "v"}, {0, 16, "V"}, {0, 32, "0"}}},
    };
    std::string dump;
    for (const auto& c : cases) {
        Workspace ws = WithNodes(c.nodes, static_cast<std::int16_t>(c.mode));
        test::ScriptedPrompts prompts;
        const NodeOrdering ordering = c.mode == 0 ? NodeOrdering::ByLocation : NodeOrdering::ByName;
        const bool done = c.mode > 0 ? AutoName(ws, prompts)
                                     : CheckNames(ws.Circuit, ws.Naming, ordering, prompts);
        dump += std::string("== ") + c.what + "\n" + Outcome(ws, done, prompts) + "\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("analysis/node_naming.txt", dump));
    EXPECT_EQ(LocationKey(80, 240), "02400080");
    EXPECT_EQ(LocationKey(80.5f, 239.5f), "02400080"); // ties to even
    EXPECT_EQ(LocationKey(-8, 12345), "12345-0008");
    EXPECT_EQ(LocationKey(-0.25f, 0), "00000000");
    EXPECT_EQ(LocationKey(9999.4f, 9999.5f), "100009999"); // the first five-digit value
}

TEST(NodeNaming, RenamingAsksWithTheOldNameTakesTheAnswerAsTypedAndKeepsTheNameOnEmpty) {
    Workspace ws = WithNodes({{0, 0, "V1"}, {0, 16, "0"}});
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
