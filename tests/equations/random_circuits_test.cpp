// Random circuits solved as a student does. The power put in is the power taken out. The
// equations the program writes, rearranged, are judged right, and with a term's sign flipped
// or the constant moved wrong; the record of the elimination replays to the reduced form to
// the bit, the exact fractions follow the same steps to the same answers, and the last step
// shown reads as the reduced form does.

#include "analysis/gauss_jordan.h"
#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "equations/equation_check.h"
#include "equations/exact_node_matrix.h"
#include "equations/row_operation_steps.h"
#include "support/lattice_circuit.h"
#include "support/scripted_prompts.h"
#include "tables/number_text.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace ampora {
namespace {

// Each chain's current out of the equation's nodes, written as a student would: the nodes by
// their own names, every member of a supernode included.
struct StudentTerm {
    std::string text;
    double current = 0; // at the solution
};

std::vector<StudentTerm> StudentTerms(const Workspace& ws, int variable) {
    const EqnVar& var = ws.Equations.EqnVars[static_cast<std::size_t>(variable - 1)];
    std::vector<int> members = {ws.Naming.NodeOrder[var.Node]};
    if (var.SuperNode > 0) {
        members.clear();
        for (const int position : ws.Equations.SuperNodes[var.SuperNode].Nodes) {
            members.push_back(ws.Naming.NodeOrder[position]);
        }
    }
    const auto isMember = [&](int slot) {
        return std::ranges::find(members, slot) != members.end();
    };
    std::vector<StudentTerm> terms;
    for (int b = 1; b <= ws.Topology.NumBranches; ++b) {
        const Branch& chain = ws.Topology.Branches[b];
        if (!isMember(chain.StartNode) || isMember(chain.EndNode)) {
            continue;
        }
        const NodeLabel& start = ws.Circuit.NodeLabels[chain.StartNode];
        const NodeLabel& end = ws.Circuit.NodeLabels[chain.EndNode];
        terms.push_back(
            chain.SourceCurrent != 0
                ? StudentTerm{"(" + ShortestText(chain.SourceCurrent) + ")", chain.SourceCurrent}
                : StudentTerm{"(" + start.Name + "-" + end.Name + "+(" + ShortestText(chain.EMF) +
                                  "))/" + ShortestText(chain.Resistance),
                              (start.Voltage - end.Voltage + chain.EMF) / chain.Resistance});
    }
    return terms;
}

std::string Joined(const std::vector<StudentTerm>& terms, std::size_t flipped) {
    std::string text;
    for (std::size_t k = 0; k < terms.size(); ++k) {
        text += (k == flipped ? " - " : " + ") + terms[k].text;
    }
    return text;
}

void CheckTheEquations(const Workspace& ws, int& flips, int& flipsNamed) {
    const Equations& eq = ws.Equations;
    for (int v = 1; v <= eq.NumUnknowns; ++v) {
        const std::size_t row = static_cast<std::size_t>(v - 1);
        const std::string& first = eq.FirstWritten[row];
        const std::string left = first.substr(0, first.rfind(" = 0"));
        const std::vector<StudentTerm> terms = StudentTerms(ws, v);
        const std::string named = Joined(terms, terms.size());
        for (const std::string& text :
             {first, eq.Collected[row], "0 = -(" + left + ")", "-2.5*(" + left + ") = 0",
              "(" + left + ")/7 = 0", named + " = 0", "0 = 4(" + named + ")"}) {
            const EquationVerdict verdict = CheckEquation(ws, v, text);
            EXPECT_TRUE(verdict.equivalent) << text << ": " << verdict.error << verdict.hint;
            EXPECT_EQ(verdict.equationOf, eq.EqnVars[row].VarName);
        }
        const EquationVerdict shifted = CheckEquation(ws, v, left + " + 1 = 0");
        EXPECT_FALSE(shifted.equivalent) << left;
        EXPECT_FALSE(shifted.hint.empty());
        for (std::size_t k = 0; k < terms.size(); ++k) {
            if (std::fabs(terms[k].current) < 1e-9) {
                continue; // a term of no current is the same with either sign
            }
            const std::string text = Joined(terms, k) + " = 0";
            const EquationVerdict verdict = CheckEquation(ws, v, text);
            EXPECT_FALSE(verdict.equivalent) << text;
            EXPECT_FALSE(verdict.hint.empty()) << text;
            ++flips;
            flipsNamed += verdict.hint.find("wrong sign") != std::string::npos;
        }
    }
}

void CheckTheElimination(const Workspace& ws) {
    const Equations& eq = ws.Equations;
    const int n = eq.NumUnknowns;
    RowOperationReplay replay(eq.Augmented, n, n);
    for (const RowOperation& operation : eq.RowOps) {
        replay.Apply(operation);
    }
    replay.ClearNegligible();
    ASSERT_EQ(std::memcmp(&replay.Matrix(), &eq.Reduced, sizeof eq.Reduced), 0);
    const auto exact = ExactNodeElimination(ws);
    ASSERT_TRUE(exact);
    Workspace settled = ws;
    settled.Equations.RowOps.clear();
    settled.Equations.Augmented = eq.Reduced;
    EXPECT_EQ(ShowRowOperations(ws, false, 6).steps.back().cells,
              ShowRowOperations(settled, false, 6).steps.front().cells);
    for (int row = 1; row <= n; ++row) {
        const double rhs = exact->reduced(row, n + 1).convert_to<double>();
        EXPECT_NEAR(rhs, eq.Reduced(row, n + 1), 1e-9 * std::max(1.0, std::fabs(rhs)));
    }
}

TEST(RandomCircuits, TheEquationsAreJudgedAndTheEliminationReplaysAndFollowsInFractions) {
    std::mt19937 random(16);
    // Values of eighths: the single a chain sums is its exact value, so the fractions and the
    // decimals solve the very same system.
    const test::LatticeOptions options{20, false, 0.3};
    int solved = 0, withUnknowns = 0, flips = 0, flipsNamed = 0;
    for (int trial = 0; trial < 600 && solved < 150; ++trial) {
        const test::LatticeCircuit lattice = test::RandomLatticeCircuit(random, options);
        Workspace ws;
        ws.Circuit = test::DrawLattice(lattice);
        test::ScriptedPrompts prompts;
        if (LeaveStep1(ws, prompts) != TransitionResult::Entered || !AutoName(ws, prompts) ||
            LeaveStep2(ws, prompts) != TransitionResult::Entered) {
            continue;
        }
        ++solved;
        SCOPED_TRACE(test::DescribeLattice(lattice));
        CheckTheEquations(ws, flips, flipsNamed);
        ws.ViewMode = kViewPower; // the power view adds up what goes in and what comes out
        WriteLabels(ws, 3);
        EXPECT_NEAR(ws.PowerIn, ws.PowerOut, 1e-9 * std::max(1.0, std::fabs(ws.PowerIn)));
        if (ws.Equations.NumUnknowns > 0) {
            ++withUnknowns;
            CheckTheElimination(ws);
        }
    }
    EXPECT_EQ(solved, 150);
    EXPECT_GE(withUnknowns, 100);
    // A flipped term is named as such unless the flip also makes another equation, or
    // two terms of the equation are the same.
    EXPECT_GT(flipsNamed, flips * 9 / 10) << flipsNamed << " of " << flips;
}

} // namespace
} // namespace ampora
