#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "support/lattice_circuit.h"
#include "support/scripted_prompts.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace ampora {
namespace {

using test::LatticeCircuit;

bool HasNode(const LatticeCircuit& lattice) {
    for (int p = 0; p < lattice.columns * lattice.rows; ++p) {
        int degree = 0;
        for (const auto& edge : lattice.edges) {
            degree += (edge.from == p) + (edge.to == p);
        }
        if (degree >= 3) {
            return true;
        }
    }
    return false;
}

double Scale(const std::vector<double>& values) {
    double scale = 1e-12;
    for (const double v : values) {
        scale = std::max(scale, std::fabs(v));
    }
    return scale;
}

// Checks one solved circuit against the independent analysis; returns "" when they agree.
std::string Disagreement(const LatticeCircuit& lattice, const Workspace& ws) {
    int reference = 0;
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        if (ws.circuit.NodeLabels[slot].Name == "0") {
            reference = slot;
        }
    }
    const NodeLabel& ground = ws.circuit.NodeLabels[reference];
    const auto oracle = test::SolveLattice(lattice, test::PointAt(lattice, ground.X, ground.Y));
    if (!oracle) {
        return "solved a circuit whose equations are singular";
    }
    const double voltageScale = Scale(oracle->voltage);
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.circuit.NodeLabels[slot];
        const double expected = oracle->voltage[test::PointAt(lattice, node.X, node.Y)];
        if (std::fabs(node.Voltage - expected) > 1e-9 * voltageScale) {
            return "node " + node.Name + " at " + std::to_string(node.Voltage) + " V, expected " +
                   std::to_string(expected);
        }
    }
    const double currentScale = Scale(oracle->screenCurrent);
    int element = 0;
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        if (lattice.edges[e].device == test::LatticeDevice::None) {
            continue;
        }
        const double current = ws.circuit.Elements[++element].Current;
        if (std::fabs(current - oracle->screenCurrent[e]) > 1e-9 * currentScale) {
            return "element " + std::to_string(element) + " carries " + std::to_string(current) +
                   " A, expected " + std::to_string(oracle->screenCurrent[e]);
        }
    }
    return "";
}

TEST(RandomCircuits, SolvedAnswersMatchAnIndependentNodalAnalysisAndBalancePower) {
    std::mt19937 random(20261121);
    std::map<std::string, int> refusals;
    int solved = 0;
    for (int trial = 0; trial < 1000 && solved < 300; ++trial) {
        const LatticeCircuit lattice = test::RandomLatticeCircuit(random);
        SCOPED_TRACE(test::DescribeLattice(lattice));
        Workspace ws;
        ws.circuit = test::DrawLattice(lattice);
        test::ScriptedPrompts prompts;
        if (LeaveStep1(ws, prompts) != TransitionResult::Entered || !AutoName(ws, prompts) ||
            LeaveStep2(ws, prompts) != TransitionResult::Entered) {
            const std::string why = prompts.messages.empty() ? "(silent)" : prompts.messages[0];
            ++refusals[why];
            // A refusal must be one nodal analysis really cannot get past: a drawing
            // without nodes, or a system without a unique solution.
            if (why == "You can't do nodal analysis since there are no nodes.") {
                EXPECT_FALSE(HasNode(lattice));
            } else if (!lattice.edges.empty()) {
                EXPECT_FALSE(test::SolveLattice(lattice, lattice.edges.front().from)) << why;
            }
            continue;
        }
        ++solved;
        EXPECT_EQ(Disagreement(lattice, ws), "");
        ws.ViewMode = 3;
        WriteLabels(ws, 3);
        EXPECT_NEAR(ws.PowerIn, ws.PowerOut, 1e-9 * std::max(1.0, std::fabs(ws.PowerIn)));
    }
    std::string summary;
    for (const auto& [why, count] : refusals) {
        summary += std::to_string(count) + " x " + why + "\n";
    }
    EXPECT_EQ(solved, 300) << summary;
}

} // namespace
} // namespace ampora
