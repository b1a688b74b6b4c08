#include "equations/node_voltages.h"

#include "equations/supernode_queries.h"
#include "tables/analysis_failure.h"

#include <cmath>
#include <vector>

namespace ampora {

void PutReferenceFirst(Workspace& ws) {
    if (ws.Naming.HasReference == 0) {
        return;
    }
    int reference = 0;
    for (int position = 1; position <= ws.Circuit.NumNodes; ++position) {
        if (ws.Circuit.NodeLabels[NodeAt(ws, position)].Name == "0") {
            reference = position;
            break;
        }
    }
    if (reference <= 1) {
        return;
    }
    const std::int16_t slot = ws.Naming.NodeOrder[reference];
    for (int position = reference; position > 1; --position) {
        ws.Naming.NodeOrder[position] = ws.Naming.NodeOrder[position - 1];
    }
    ws.Naming.NodeOrder[1] = slot;
    for (int position = 1; position <= ws.Circuit.NumNodes; ++position) {
        ws.Naming.NodeRank[ws.Naming.NodeOrder[position]] = static_cast<std::int16_t>(position);
    }
}

namespace {

// The column of the row's leading 1, 0 for a row of zeros.
int LeadingColumn(const AugmentedMatrix& reduced, int row, int unknowns) {
    for (int c = 1; c <= unknowns; ++c) {
        if (reduced(row, c) != 0) {
            return c;
        }
    }
    return 0;
}

} // namespace

int ZeroVariable(const Workspace& ws) {
    const int n = ws.Equations.NumUnknowns;
    if (ws.Naming.HasReference != 0 || n == 0) {
        return 0;
    }
    std::vector<bool> led(static_cast<std::size_t>(n) + 1, false);
    for (int row = 1; row <= n; ++row) {
        led[static_cast<std::size_t>(LeadingColumn(ws.Equations.Reduced, row, n))] = true;
    }
    for (int c = 1; c <= n; ++c) {
        if (!led[static_cast<std::size_t>(c)]) {
            return c;
        }
    }
    return n;
}

void ReadNodeVoltages(Workspace& ws) {
    const int n = ws.Equations.NumUnknowns;
    const AugmentedMatrix& reduced = ws.Matrix;
    std::vector<double> value(static_cast<std::size_t>(n) + 1, 0);
    int pivots = 0;
    for (int row = 1; row <= n; ++row) {
        const int pivotColumn = LeadingColumn(reduced, row, n);
        if (pivotColumn == 0) {
            if (reduced(row, n + 1) != 0) {
                throw AnalysisFailure::CannotSolve; // 0 = a non-zero constant
            }
            continue;
        }
        ++pivots;
        value[static_cast<std::size_t>(pivotColumn)] = reduced(row, n + 1);
    }
    // Without a reference one voltage is free and is read as 0; any further freedom means
    // parts of the circuit float against each other.
    const int allowedFree = ws.Naming.HasReference != 0 ? 0 : (n > 0 ? 1 : 0);
    if (n - pivots > allowedFree) {
        throw AnalysisFailure::CannotSolve;
    }
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        ws.Circuit.NodeLabels[slot].Voltage = 0;
    }
    for (int v = 1; v <= n; ++v) {
        const EqnVar& var = ws.Equations.EqnVars[static_cast<std::size_t>(v - 1)];
        ws.Circuit.NodeLabels[NodeAt(ws, var.Node)].Voltage = value[static_cast<std::size_t>(v)];
    }
    for (int s = 1; s <= ws.Equations.NumSuperNodes; ++s) {
        const auto& members = ws.Equations.SuperNodes[s].Nodes;
        const double anchor = ws.Circuit.NodeLabels[NodeAt(ws, members.front())].Voltage;
        for (std::size_t m = 1; m < members.size(); ++m) {
            NodeLabel& node = ws.Circuit.NodeLabels[NodeAt(ws, members[m])];
            node.Voltage = anchor + node.AliasOffset;
        }
    }
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        if (!std::isfinite(ws.Circuit.NodeLabels[slot].Voltage)) {
            throw AnalysisFailure::CannotSolve;
        }
    }
}

} // namespace ampora
