#include "equations/node_voltages.h"

#include "equations/supernode_queries.h"
#include "tables/analysis_failure.h"

#include <cmath>
#include <vector>

namespace ampora {

void PutReferenceFirst(Workspace& ws) {
    if (ws.naming.HasReference == 0) {
        return;
    }
    int reference = 0;
    for (int position = 1; position <= ws.circuit.NumNodes; ++position) {
        if (ws.circuit.NodeLabels[NodeAt(ws, position)].Name == "0") {
            reference = position;
            break;
        }
    }
    if (reference <= 1) {
        return;
    }
    const std::int16_t slot = ws.naming.NodeOrder[reference];
    for (int position = reference; position > 1; --position) {
        ws.naming.NodeOrder[position] = ws.naming.NodeOrder[position - 1];
    }
    ws.naming.NodeOrder[1] = slot;
    for (int position = 1; position <= ws.circuit.NumNodes; ++position) {
        ws.naming.NodeRank[ws.naming.NodeOrder[position]] = static_cast<std::int16_t>(position);
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
    const int n = ws.equations.NumUnknowns;
    if (ws.naming.HasReference != 0 || n == 0) {
        return 0;
    }
    std::vector<bool> led(static_cast<std::size_t>(n) + 1, false);
    for (int row = 1; row <= n; ++row) {
        led[static_cast<std::size_t>(LeadingColumn(ws.equations.Reduced, row, n))] = true;
    }
    for (int c = 1; c <= n; ++c) {
        if (!led[static_cast<std::size_t>(c)]) {
            return c;
        }
    }
    return n;
}

void ReadNodeVoltages(Workspace& ws) {
    const int n = ws.equations.NumUnknowns;
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
    const int allowedFree = ws.naming.HasReference != 0 ? 0 : (n > 0 ? 1 : 0);
    if (n - pivots > allowedFree) {
        throw AnalysisFailure::CannotSolve;
    }
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        ws.circuit.NodeLabels[slot].Voltage = 0;
    }
    for (int v = 1; v <= n; ++v) {
        const EqnVar& var = ws.equations.EqnVars[static_cast<std::size_t>(v - 1)];
        ws.circuit.NodeLabels[NodeAt(ws, var.Node)].Voltage = value[static_cast<std::size_t>(v)];
    }
    for (int s = 1; s <= ws.equations.NumSuperNodes; ++s) {
        const auto& members = ws.equations.SuperNodes[s].Nodes;
        const double anchor = ws.circuit.NodeLabels[NodeAt(ws, members.front())].Voltage;
        for (std::size_t m = 1; m < members.size(); ++m) {
            NodeLabel& node = ws.circuit.NodeLabels[NodeAt(ws, members[m])];
            node.Voltage = anchor + node.AliasOffset;
        }
    }
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        if (!std::isfinite(ws.circuit.NodeLabels[slot].Voltage)) {
            throw AnalysisFailure::CannotSolve;
        }
    }
}

} // namespace ampora
