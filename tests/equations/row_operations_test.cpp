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

// The replay of the record ends at the solver's reduced form to the bit, the fractions follow
// the same steps, and the last step shown reads as the reduced form does.
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
