#include "analysis/gauss_jordan.h"
#include "analysis/node_naming.h"
#include "analysis/row_operation_text.h"
#include "equations/exact_node_matrix.h"
#include "equations/matrix_export.h"
#include "equations/row_operation_steps.h"
#include "support/lattice_circuit.h"
#include "support/memory_settings_store.h"
#include "support/scripted_prompts.h"
#include "support/solve_session.h"
#include "support/test_files.h"
#include "tables/number_text.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <sstream>

namespace ampora {
namespace {

std::string ExactRows(const ExactMatrix& matrix) {
    std::string text;
    for (int i = 1; i <= matrix.rows; ++i) {
        text += " ";
        for (int k = 1; k <= matrix.columns + 1; ++k) {
            text += (k == matrix.columns + 1 ? " | " : " ") + RationalText(matrix(i, k));
        }
        text += "\n";
    }
    return text;
}

TEST(ExactElimination, TheBridgeExampleFollowsTheStepsWorkedByHand) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("wheatstone_bridge.amq"), 0);
    ASSERT_TRUE(session.solved);
    const auto start = ExactNodeMatrix(session.ws);
    const auto exact = ExactNodeElimination(session.ws);
    ASSERT_TRUE(start && exact);
    std::string text = "start\n" + ExactRows(*start);
    const RowOperations& operations = session.ws.equations.RowOps;
    ASSERT_EQ(operations.size(), exact->steps.size());
    for (std::size_t s = 0; s < operations.size(); ++s) {
        const ExactStep& step = exact->steps[s];
        text += DescribeRowOperation(operations[s], step.factor, 3).Joined() + "\n" +
                ExactRows(step.after);
    }
    const std::string worked = test::ReadBytes(std::filesystem::path(AMPORA_SOURCE_DIR) /
                                               "tests/data/row_operations/wheatstone_bridge.txt");
    EXPECT_EQ(text, worked.substr(worked.find("start\n")));
}

// Every recorded operation is one the solver could have done at that point: a swap brings up
// the largest entry, a scale divides by the pivot itself, an add removes the entry exactly.
std::string Inconsistency(const AugmentedMatrix& before, const RowOperation& operation) {
    const double entry = before(operation.row, operation.column);
    switch (operation.kind) {
    case RowOperationKind::Swap:
        return std::fabs(before(operation.source, operation.column)) > std::fabs(entry)
                   ? ""
                   : "a swap that brings up no larger pivot";
    case RowOperationKind::Scale:
        return operation.number == entry ? "" : "a division by something other than the pivot";
    case RowOperationKind::Add:
        return operation.number == -entry && before(operation.source, operation.column) == 1
                   ? ""
                   : "an addition that does not clear the entry";
    }
    return "an unknown operation";
}

TEST(RowOperations, ReplayingTheRecordOfRandomCircuitsEndsAtTheReducedForm) {
    std::mt19937 random(16);
    // Values of eighths: the single a chain sums is its exact value, so the fractions and the
    // decimals solve the very same system.
    const test::LatticeOptions options{20, false, 0.3};
    int solved = 0;
    int withUnknowns = 0;
    for (int trial = 0; trial < 600 && solved < 150; ++trial) {
        const test::LatticeCircuit lattice = test::RandomLatticeCircuit(random, options);
        Workspace ws;
        ws.circuit = test::DrawLattice(lattice);
        test::ScriptedPrompts prompts;
        if (LeaveStep1(ws, prompts) != TransitionResult::Entered || !AutoName(ws, prompts) ||
            LeaveStep2(ws, prompts) != TransitionResult::Entered) {
            continue;
        }
        ++solved;
        SCOPED_TRACE(test::DescribeLattice(lattice));
        const Equations& eq = ws.equations;
        const int n = eq.NumUnknowns;
        RowOperationReplay replay(eq.Augmented, n, n);
        for (const RowOperation& operation : eq.RowOps) {
            const std::string wrong = Inconsistency(replay.Matrix(), operation);
            ASSERT_EQ(wrong, "") << DescribeRowOperation(operation, 6).Joined();
            replay.Apply(operation);
        }
        replay.ClearNegligible();
        ASSERT_EQ(std::memcmp(&replay.Matrix(), &eq.Reduced, sizeof eq.Reduced), 0);

        const auto exact = ExactNodeElimination(ws);
        if (n == 0) {
            continue;
        }
        ASSERT_TRUE(exact);
        ++withUnknowns;
        // The last step reads as the reduced form does.
        Workspace settled = ws;
        settled.equations.RowOps.clear();
        settled.equations.Augmented = eq.Reduced;
        EXPECT_EQ(ShowRowOperations(ws, false, 6).steps.back().cells,
                  ShowRowOperations(settled, false, 6).steps.front().cells);
        for (int row = 1; row <= n; ++row) {
            const double rhs = exact->reduced(row, n + 1).convert_to<double>();
            EXPECT_NEAR(rhs, eq.Reduced(row, n + 1), 1e-9 * std::max(1.0, std::fabs(rhs)));
        }
    }
    EXPECT_EQ(solved, 150);
    EXPECT_GE(withUnknowns, 100);
}

std::string StepsText(const ShownSteps& shown, int n) {
    std::string text;
    for (const ShownStep& step : shown.steps) {
        text += step.words.Joined() + "  [changed " + std::to_string(step.changedRow) + " " +
                std::to_string(step.otherChangedRow) + ", pivot " + std::to_string(step.pivotRow) +
                "," + std::to_string(step.pivotColumn) + "]\n";
        for (std::size_t k = 0; k < step.cells.size(); ++k) {
            text += (k % static_cast<std::size_t>(n + 1) == 0 ? " " : " ") + step.cells[k];
            text += (k + 1) % static_cast<std::size_t>(n + 1) == 0 ? "\n" : "";
        }
    }
    for (const std::string& solution : shown.solutions) {
        text += solution + "\n";
    }
    return text;
}

TEST(ShownSteps, ASwapMarksBothRowsAndALeftoverReadsAsZeroAsInTheReducedForm) {
    Workspace ws;
    ws.equations.NumUnknowns = 2;
    ws.equations.EqnVars = {EqnVar{0, 2, "Va"}, EqnVar{0, 3, "Vb"}};
    // Row 2 ends with a leftover of about -5E-12, which the solver clears.
    const double rows[2][3] = {{0.1, 0.2, 0.3}, {0.2, 0.4, 0.6 + 1e-11}};
    for (int r = 1; r <= 2; ++r) {
        for (int c = 1; c <= 3; ++c) {
            ws.equations.Augmented(r, c) = rows[r - 1][c - 1];
        }
    }
    ws.equations.Reduced = ws.equations.Augmented;
    Solve(ws.equations.Reduced, 2, 2, &ws.equations.RowOps);
    EXPECT_EQ(StepsText(ShowRowOperations(ws, false, 3), 2),
              "The augmented matrix as set up  [changed 0 0, pivot 0,0]\n"
              " 0.1 0.2 0.3\n 0.2 0.4 0.6\n"
              "R1 ↔ R2  [changed 1 2, pivot 1,1]\n"
              " 0.2 0.4 0.6\n 0.1 0.2 0.3\n"
              "R1 ← R1 ÷ 0.2  [changed 1 0, pivot 1,1]\n"
              " 1 2 3\n 0.1 0.2 0.3\n"
              "R2 ← R2 − 0.1·R1  [changed 2 0, pivot 1,1]\n"
              " 1 2 3\n 0 0 0\n");
}

TEST(MatrixExport, TheGjFileOfAnExampleReadsBackToTheSameMatrix) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("two_supernodes.amq"), 0);
    ASSERT_TRUE(session.solved);
    const Equations& eq = session.ws.equations;
    const std::string text = GjText(eq.Augmented, eq.NumUnknowns);
    std::istringstream lines(text);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line, '\n'));
    EXPECT_EQ(line, std::to_string(eq.NumUnknowns) + "\r");
    int row = 0;
    while (std::getline(lines, line, '\n')) {
        ASSERT_EQ(line.back(), '\r');
        line.pop_back();
        ++row;
        std::istringstream fields(line);
        std::string field;
        int column = 0;
        while (std::getline(fields, field, ',')) {
            ++column;
            EXPECT_EQ(ParseDouble(field), eq.Augmented(row, column)) << row << "," << column;
        }
        EXPECT_EQ(column, eq.NumUnknowns + 1);
    }
    EXPECT_EQ(row, eq.NumUnknowns);
}

TEST(MatrixExport, ExportMatrixAsksForACsvBesideTheCircuitAndSaysWhenItCannotWrite) {
    test::TempDir dir;
    test::SolveSession session;
    test::Solve(session, test::ExampleText("wheatstone_bridge.amq"), 0);
    ASSERT_TRUE(session.solved);
    session.ws.CurrentFileName = (dir / "bridge.amq").string();
    const std::string written = (dir / "bridge.csv").string();
    const std::string unwritable = (dir / "missing" / "bridge.csv").string();
    const struct {
        std::optional<std::string> answer;
        bool exported;
        const char* message; // "" for none
    } rows[] = {
        {std::nullopt, false, ""},
        {written, true, ""},
        {unwritable, false, "(!) The matrix could not be saved as "},
    };
    for (const auto& row : rows) {
        test::ScriptedPrompts prompts;
        test::ScriptedFileDialogs dialogs;
        test::MemorySettingsStore store;
        dialogs.answers.push_back(row.answer);
        DocumentContext context{session.ws, prompts, dialogs, store, "/program"};
        EXPECT_EQ(ExportMatrix(context), row.exported);
        EXPECT_EQ(dialogs.shown, std::vector<std::string>{"csv in " + dir.Path().string()});
        const std::string shown = prompts.messages.empty() ? "" : prompts.messages[0];
        EXPECT_EQ(shown.substr(0, std::string(row.message).size()), row.message);
        EXPECT_EQ(prompts.messages.size(), std::string(row.message).empty() ? 0u : 1u);
    }
    EXPECT_EQ(test::ReadBytes(written), MatrixCsvText(session.ws));
    // Nothing to export before the circuit is solved.
    session.ws.Step = 2;
    test::ScriptedPrompts prompts;
    test::ScriptedFileDialogs dialogs;
    test::MemorySettingsStore store;
    DocumentContext context{session.ws, prompts, dialogs, store, "/program"};
    EXPECT_FALSE(ExportMatrix(context));
    EXPECT_TRUE(dialogs.shown.empty());
}

} // namespace
} // namespace ampora
