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

Workspace WithNodes(const std::vector<N>& nodes, std::int16_t pattern = 1) {
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

// The names in slot order, the order of the last check and its inverse, and the messages.
std::string Outcome(const Workspace& ws, bool done, const test::ScriptedPrompts& prompts) {
    std::string out = done ? "done:" : "refused:";
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        out += " " + ws.circuit.NodeLabels[slot].Name;
    }
    out += " | order";
    for (int k = 1; k <= ws.circuit.NumNodes; ++k) {
        out += " " + std::to_string(ws.naming.NodeOrder[k]);
    }
    out += " rank";
    for (int k = 1; k <= ws.circuit.NumNodes; ++k) {
        out += " " + std::to_string(ws.naming.NodeRank[k]);
    }
    out += " reference " + std::to_string(ws.naming.HasReference);
    for (const std::string& message : prompts.messages) {
        out += " | " + message;
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

TEST(NodeNaming, AutoNameNamesTopToBottomLeftToRightAndTheLastNodeIsTheReference) {
    const struct {
        std::vector<N> nodes;
        std::int16_t pattern;
        const char* outcome;
    } cases[] = {
        {{{400, 240, "[ ]"}, {80, 80, "x"}, {240, 80, "[ ]"}, {80, 240, "0x"}},
         1,
         "done: 0 V1 V2 V3 | order 2 3 4 1 rank 4 1 2 3 reference 0"},
        // An existing reference is skipped and uses no counter value.
        {{{400, 240, "[ ]"}, {80, 80, "[ ]"}, {240, 80, "[ ]"}, {80, 240, "0"}},
         1,
         "done: V3 V1 V2 0 | order 2 3 4 1 rank 4 1 2 3 reference -1"},
        {{{80, 80, "0"}, {240, 80, "[ ]"}, {80, 240, "0"}},
         1,
         "refused: 0 [ ] 0 | order 0 0 0 rank 0 0 0 reference 0 | You can only have one "
         "reference node named 0.  You must rename the other ones."},
        {Twenty(), 2,
         "done: S R Q P O N M L K J I H G F E D C B A 0 | order 20 19 18 17 16 15 14 13 12 11 10 "
         "9 8 7 6 5 4 3 2 1 rank 20 19 18 17 16 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1 reference -1"},
        {Twenty(), 3,
         "done: s r q p o n m l k j i h g f e d c b a 0 | order 20 19 18 17 16 15 14 13 12 11 10 "
         "9 8 7 6 5 4 3 2 1 rank 20 19 18 17 16 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1 reference -1"},
        {Twenty(), 1,
         "done: V19 V18 V17 V16 V15 V14 V13 V12 V11 V10 V9 V8 V7 V6 V5 V4 V3 V2 V1 0 | order 20 "
         "19 18 17 16 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1 rank 20 19 18 17 16 15 14 13 12 11 10 "
         "9 8 7 6 5 4 3 2 1 reference -1"},
    };
    for (const auto& c : cases) {
        Workspace ws = WithNodes(c.nodes, c.pattern);
        test::ScriptedPrompts prompts;
        const bool done = AutoName(ws, prompts);
        EXPECT_EQ(Outcome(ws, done, prompts), c.outcome);
    }
}

TEST(NodeNaming, TheNameCheckOrdersByLocationKeyOrByteAndRefusesTwoReferencesBeforeDuplicates) {
    EXPECT_EQ(LocationKey(80, 240), "02400080");
    EXPECT_EQ(LocationKey(80.5f, 239.5f), "02400080"); // ties to even
    EXPECT_EQ(LocationKey(-8, 12345), "12345-0008");
    EXPECT_EQ(LocationKey(-0.25f, 0), "00000000");
    EXPECT_EQ(LocationKey(9999.4f, 9999.5f), "100009999"); // five digits sort as text
    const struct {
        std::vector<N> nodes;
        NodeOrdering ordering;
        const char* outcome;
    } cases[] = {
        {{{80, 9000, "a"}, {80, 10000, "b"}, {80, 80, "c"}},
         NodeOrdering::ByLocation,
         "done: a b c | order 3 2 1 rank 3 2 1 reference 0"},
        // Character codes; equal keys keep their slot order.
        {{{0, 0, "b"}, {0, 16, "V2"}, {0, 32, "a"}, {0, 48, "V10"}, {0, 64, "B"}, {0, 80, "0"}},
         NodeOrdering::ByName,
         "done: b V2 a V10 B 0 | order 6 5 4 2 3 1 rank 6 4 5 3 2 1 reference -1"},
        // Bytes compare unsigned, so a letter beyond ASCII comes last; a prefix comes first.
        {{{0, 0, "\xc3\xa9"}, {0, 16, "z"}, {0, 32, "V1"}, {0, 48, "V"}},
         NodeOrdering::ByName,
         "done: \xc3\xa9 z V1 V | order 4 3 2 1 rank 4 3 2 1 reference 0"},
        // One unnamed node is a name like any other.
        {{{0, 0, "[ ]"}, {0, 16, "V1"}, {0, 32, "0"}},
         NodeOrdering::ByName,
         "done: [ ] V1 0 | order 3 2 1 rank 3 2 1 reference -1"},
        {{{0, 0, "[ ]"}, {0, 16, "[ ]"}, {0, 32, "0"}},
         NodeOrdering::ByName,
         "refused: [ ] [ ] 0 | order 0 0 0 rank 0 0 0 reference -1 | Names must be unique.  You "
         "must rename the duplicate ones."},
        {{{0, 0, "0"}, {0, 16, "0"}, {0, 32, "0"}},
         NodeOrdering::ByName,
         "refused: 0 0 0 | order 0 0 0 rank 0 0 0 reference 0 | You can only have one reference "
         "node named 0.  You must rename the other ones."},
        {{{0, 0, "v"}, {0, 16, "V"}, {0, 32, "0"}},
         NodeOrdering::ByName,
         "done: v V 0 | order 3 2 1 rank 3 2 1 reference -1"},
    };
    for (const auto& c : cases) {
        Workspace ws = WithNodes(c.nodes);
        test::ScriptedPrompts prompts;
        const bool done = CheckNames(ws.circuit, ws.naming, c.ordering, prompts);
        EXPECT_EQ(Outcome(ws, done, prompts), c.outcome);
    }
}

TEST(NodeNaming, RenamingAsksWithTheOldNameTakesTheAnswerAsTypedAndKeepsTheNameOnEmpty) {
    Workspace ws = WithNodes({{0, 0, "V1"}, {0, 16, "0"}});
    test::ScriptedPrompts prompts;
    prompts.textAnswers = {" Vout ", ""};
    EXPECT_TRUE(RenameNode(ws, prompts, 1, 10, 20));
    EXPECT_FALSE(RenameNode(ws, prompts, 2, 10, 20));
    EXPECT_EQ(ws.circuit.NodeLabels[1].Name + "|" + ws.circuit.NodeLabels[2].Name, " Vout |0");
    EXPECT_EQ(prompts.questions,
              (std::vector<std::string>{"Enter new name: [V1]", "Enter new name: [0]"}));

    ws.Step = 1; // clicks on labels do nothing outside step 2
    prompts.textAnswers = {"X"};
    EXPECT_FALSE(RenameNode(ws, prompts, 1, 10, 20));
    EXPECT_FALSE(RenameNode(ws, prompts, 3, 10, 20));
    EXPECT_EQ(prompts.questions.size(), 2u);

    ClearNames(ws.circuit); // every node unnamed, the reference too
    EXPECT_EQ(ws.circuit.NodeLabels[1].Name + "|" + ws.circuit.NodeLabels[2].Name, "[ ]|[ ]");
}

} // namespace
} // namespace ampora
