#include "equations/kcl_equations.h"

#include "equations/supernodes.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

void AddChain(Workspace& ws, int start, int end, float r, float emf, float source,
              const std::string& name = "") {
    const int slot = ++ws.topology.NumBranches;
    Branch& chain = ws.topology.Branches[slot];
    chain.StartNode = static_cast<std::int16_t>(start);
    chain.EndNode = static_cast<std::int16_t>(end);
    chain.Resistance = r;
    chain.EMF = emf;
    chain.SourceCurrent = source;
    chain.CurrentName = name;
}

// Nodes named in slot order; the order of positions is the order of slots.
Workspace Nodes(std::initializer_list<const char*> names) {
    Workspace ws;
    for (const char* name : names) {
        const int slot = ++ws.circuit.NumNodes;
        ws.circuit.NodeLabels[slot].Name = name;
        ws.naming.NodeOrder[slot] = static_cast<std::int16_t>(slot);
        ws.naming.NodeRank[slot] = static_cast<std::int16_t>(slot);
    }
    ws.naming.HasReference = ws.circuit.NodeLabels[1].Name == "0" ? kTrue : kFalse;
    return ws;
}

std::string MatrixRows(const Workspace& ws) {
    std::string text;
    const int n = ws.equations.NumUnknowns;
    for (int r = 1; r <= n; ++r) {
        for (int c = 1; c <= n + 1; ++c) {
            char cell[32];
            std::snprintf(cell, sizeof cell, "%s%.6g",
                          c == n + 1 ? " | "
                          : c > 1    ? " "
                                     : "",
                          ws.Matrix(r, c));
            text += cell;
        }
        text += "\n";
    }
    return text;
}

std::string AllEquations(Workspace& ws) {
    GetSuperNodes(ws);
    WriteNodeEquations(ws);
    std::string text;
    for (std::size_t v = 0; v < ws.equations.EqnVars.size(); ++v) {
        text += ws.equations.EqnVars[v].VarName + ": " + ws.equations.FirstWritten[v] + "\n" +
                "    " + ws.equations.Collected[v] + "\n";
    }
    return text + MatrixRows(ws);
}

TEST(KclEquations, ResistorBatteryAndSourceTermsOfAnOrdinaryNode) {
    Workspace ws = Nodes({"Va", "Vb", "Vc"});
    AddChain(ws, 1, 2, 10, 0, 0);
    AddChain(ws, 1, 3, 5, 2, 0);
    AddChain(ws, 1, 3, 0, 0, -0.5f);
    AddChain(ws, 2, 1, 10, 0, 0);
    AddChain(ws, 3, 1, 5, -2, 0);
    AddChain(ws, 3, 1, 0, 0, 0.5f);
    EXPECT_EQ(AllEquations(ws), "Va: (Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0\n"
                                "    (1/10+1/5)*Va-(1/10)*Vb-(1/5)*Vc=-2/5+0.5\n"
                                "Vb: (Vb-Va)/10 = 0\n"
                                "    -(1/10)*Va+(1/10)*Vb=0\n"
                                "Vc: (Vc-Va-2)/5 + 0.5 = 0\n"
                                "    -(1/5)*Va+(1/5)*Vc=2/5-0.5\n"
                                "0.3 -0.1 -0.2 | 0.1\n"
                                "-0.1 0.1 0 | 0\n"
                                "-0.2 0 0.2 | -0.1\n");
}

} // namespace
} // namespace ampora
