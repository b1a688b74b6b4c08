#include "equations/supernode_queries.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

Workspace ThreeNamedNodes(bool withReference) {
    Workspace ws;
    for (const char* name : {"0", "Va", "Vb"}) {
        const int slot = ++ws.Circuit.NumNodes;
        ws.Circuit.NodeLabels[slot].Name = name;
        ws.Naming.NodeOrder[slot] = static_cast<std::int16_t>(slot);
        ws.Naming.NodeRank[slot] = static_cast<std::int16_t>(slot);
    }
    ws.Naming.HasReference = withReference ? kTrue : kFalse;
    return ws;
}

// A negated alias, then a member written through its anchor or, against the reference, as a
// number; without a reference the first node is an ordinary name. Worked by hand in
// tests/data/equations/supernode_queries.txt.
TEST(SupernodeQueries, AliasesNegateAndMembersAreWrittenThroughTheirAnchorsAsWorkedByHand) {
    std::string text;
    for (const char* alias : {"7", "-7", "0", "2.5", "Va-7", "Va+7", "Va", "Va+1-2", "-Va"}) {
        text += std::string(alias) + " -> " + NegAlias(alias) + "\n";
    }
    const Workspace ws = ThreeNamedNodes(true);
    for (const float offset : {5.0f, -2.5f, 0.0f}) {
        text += SuperEqnString(ws, 3, 2, offset) + " " + SuperAltEqnString(ws, 3, 2, offset) +
                " | " + SuperEqnString(ws, 3, 1, offset) + " " +
                SuperAltEqnString(ws, 3, 1, offset) + "\n";
    }
    const Workspace free = ThreeNamedNodes(false);
    text += SuperEqnString(free, 3, 1, 12) + " " + SuperAltEqnString(free, 3, 1, 12) + "\n";
    EXPECT_EQ(text, test::ExpectedText("equations/supernode_queries.txt", text));
}

} // namespace
} // namespace ampora
