#include "analysis/row_operation_text.h"
#include "equations/exact_node_matrix.h"
#include "equations/matrix_export.h"
#include "support/memory_settings_store.h"
#include "support/scripted_prompts.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

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
    const RowOperations& operations = session.ws.Equations.RowOps;
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
        EXPECT_EQ(prompts.messages.empty() ? "" : prompts.messages.at(0).substr(0, 37),
                  row.message);
        EXPECT_EQ(prompts.messages.size(), *row.message != 0 ? 1u : 0u);
        // Nothing to export before the circuit is solved, and nothing asked.
        session.ws.Step = kStepName;
        EXPECT_FALSE(ExportMatrix(context));
        EXPECT_EQ(dialogs.shown.size(), 1u);
        session.ws.Step = kStepResults;
    }
    EXPECT_EQ(test::ReadBytes(written), MatrixCsvText(session.ws));
}

} // namespace
} // namespace ampora
