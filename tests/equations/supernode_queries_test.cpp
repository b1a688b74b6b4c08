#include "equations/supernode_queries.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

TEST(NegAlias, NegatesNumbersAndSimpleSumsAndWrapsTheRest) {
    std::string text;
    for (const char* alias : {"7", "-7", "0", "2.5", "Va-7", "Va+7", "Va", "Va+1-2", "-Va"}) {
        text += std::string(alias) + " -> " + NegAlias(alias) + "\n";
    }
    EXPECT_EQ(text, "7 -> -7\n"
                    "-7 -> +7\n"
                    "0 -> -0\n"
                    "2.5 -> -2.5\n"
                    "Va-7 -> -Va+7\n"
                    "Va+7 -> -Va-7\n"
                    "Va -> -Va\n"
                    "Va+1-2 -> -Va+1-2\n"
                    "-Va -> -+Va\n");
}

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

// Against the reference a member is written as a number; without one, the first node is an
// ordinary name.
TEST(SuperEqnString, WritesAMemberThroughItsAnchorOrAsANumberAgainstTheReference) {
    const Workspace ws = ThreeNamedNodes(true);
    std::string text;
    for (const float offset : {5.0f, -2.5f, 0.0f}) {
        text += SuperEqnString(ws, 3, 2, offset) + " " + SuperAltEqnString(ws, 3, 2, offset) +
                " | " + SuperEqnString(ws, 3, 1, offset) + " " +
                SuperAltEqnString(ws, 3, 1, offset) + "\n";
    }
    const Workspace free = ThreeNamedNodes(false);
    text += SuperEqnString(free, 3, 1, 12) + " " + SuperAltEqnString(free, 3, 1, 12);
    EXPECT_EQ(text, "Vb=Va+5 Vb-Va=5 | Vb=5 Vb=5\n"
                    "Vb=Va-2.5 Vb-Va=-2.5 | Vb=-2.5 Vb=-2.5\n"
                    "Vb=Va Vb-Va=0 | Vb=0 Vb=0\n"
                    "Vb=0+12 Vb-0=12");
}

} // namespace
} // namespace ampora
