// What the student reads and what the program computes must be the same system: the
// collected equations hold the matrix rows, and the first-written equations balance at the
// solution.

#include "analysis/node_naming.h"
#include "support/expression_value.h"
#include "support/lattice_circuit.h"
#include "support/scripted_prompts.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ampora {
namespace {

// Splits "a + b - c" at the blanks around + and - outside parentheses, signs kept.
std::vector<std::string> Terms(const std::string& side, bool spaced) {
    std::vector<std::string> terms;
    std::string term;
    int depth = 0;
    for (std::size_t k = 0; k < side.size(); ++k) {
        const char c = side[k];
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        const bool split = depth == 0 && (c == '+' || c == '-') && !term.empty() &&
                           (!spaced || (k > 0 && side[k - 1] == ' '));
        if (split) {
            terms.push_back(term);
            term.clear();
        }
        term += c;
    }
    if (!term.empty()) {
        terms.push_back(term);
    }
    return terms;
}

std::string CheckCollected(const Workspace& ws, int row) {
    const std::string& text = ws.equations.Collected[static_cast<std::size_t>(row - 1)];
    const int n = ws.equations.NumUnknowns;
    const auto equals = text.find('=');
    std::vector<double> coefficient(static_cast<std::size_t>(n) + 1, 0);
    for (const std::string& term : Terms(text.substr(0, equals), false)) {
        const auto star = term.rfind(")*");
        const auto value = test::ExpressionValue(term.substr(0, star + 1), {});
        int column = 0;
        for (int c = 1; c <= n; ++c) {
            if (ws.equations.EqnVars[static_cast<std::size_t>(c - 1)].VarName ==
                term.substr(star + 2)) {
                column = c;
            }
        }
        if (!value || column == 0) {
            return "cannot read the term " + term;
        }
        coefficient[static_cast<std::size_t>(column)] += *value;
    }
    for (int c = 1; c <= n; ++c) {
        if (std::fabs(coefficient[static_cast<std::size_t>(c)] - ws.equations.Augmented(row, c)) >
            1e-12) {
            return text + ": column " + std::to_string(c) + " differs from the matrix";
        }
    }
    const auto constant = test::ExpressionValue(text.substr(equals + 1), {});
    const double expected = ws.equations.Augmented(row, n + 1);
    if (!constant || std::fabs(*constant - expected) > 1e-9 * std::max(1.0, std::fabs(expected))) {
        return text + ": the constant differs from the matrix";
    }
    return "";
}

std::string CheckFirstWritten(const Workspace& ws, int row) {
    const std::string& text = ws.equations.FirstWritten[static_cast<std::size_t>(row - 1)];
    std::map<std::string, double> voltages;
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        voltages[ws.circuit.NodeLabels[slot].Name] = ws.circuit.NodeLabels[slot].Voltage;
    }
    double sum = 0, size = 0;
    for (const std::string& term : Terms(text.substr(0, text.find(" = 0")), true)) {
        const auto value = test::ExpressionValue(term, voltages);
        if (!value) {
            return "cannot read the term " + term + " of " + text;
        }
        sum += *value;
        size += std::fabs(*value);
    }
    return std::fabs(sum) <= 1e-9 * std::max(1e-12, size) ? "" : text + " does not balance";
}

TEST(EquationAgreement, CollectedTextsHoldTheMatrixAndFirstTextsBalanceAtTheSolution) {
    std::mt19937 random(7);
    int checked = 0;
    for (int trial = 0; trial < 800 && checked < 150; ++trial) {
        const test::LatticeCircuit lattice = test::RandomLatticeCircuit(random);
        Workspace ws;
        ws.circuit = test::DrawLattice(lattice);
        test::ScriptedPrompts prompts;
        if (LeaveStep1(ws, prompts) != TransitionResult::Entered || !AutoName(ws, prompts) ||
            LeaveStep2(ws, prompts) != TransitionResult::Entered) {
            continue;
        }
        ++checked;
        SCOPED_TRACE(test::DescribeLattice(lattice));
        for (int row = 1; row <= ws.equations.NumUnknowns; ++row) {
            EXPECT_EQ(CheckCollected(ws, row), "");
            EXPECT_EQ(CheckFirstWritten(ws, row), "");
        }
    }
    EXPECT_EQ(checked, 150);
}

} // namespace
} // namespace ampora
