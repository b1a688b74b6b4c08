#include "analysis/exact_elimination.h"
#include "analysis/gauss_jordan.h"
#include "analysis/row_operation_text.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace ampora {
namespace {

using Rows = std::vector<std::vector<double>>;

AugmentedMatrix MatrixOf(const Rows& rows) {
    AugmentedMatrix matrix;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t k = 0; k < rows[i].size(); ++k) {
            matrix(static_cast<int>(i + 1), static_cast<int>(k + 1)) = rows[i][k];
        }
    }
    return matrix;
}

std::string MatrixText(const AugmentedMatrix& matrix, int n) {
    std::string text;
    for (int i = 1; i <= n; ++i) {
        text += " ";
        for (int k = 1; k <= n + 1; ++k) {
            text += (k == n + 1 ? " | " : " ") + ShortestText(matrix(i, k));
        }
        text += "\n";
    }
    return text;
}

// Each recorded step in words, then the matrix the replay holds after it; the replay's end
// must be the solver's own result to the bit.
std::string Recorded(const Rows& rows) {
    const int n = static_cast<int>(rows.size());
    const AugmentedMatrix start = MatrixOf(rows);
    AugmentedMatrix solved = start;
    RowOperations operations;
    Solve(solved, n, n, &operations);
    RowOperationReplay replay(start, n, n);
    std::string text;
    for (const RowOperation& operation : operations) {
        replay.Apply(operation);
        text += DescribeRowOperation(operation, 4).Joined() + "\n" + MatrixText(replay.Matrix(), n);
    }
    replay.ClearNegligible();
    EXPECT_EQ(std::memcmp(&replay.Matrix(), &solved, sizeof solved), 0) << text;
    return text;
}

struct RecordCase {
    const char* what;
    Rows rows;
    const char* steps;
};

TEST(RowOperations, TheSolverRecordsWhatItDoesAndNothingItPassesOver) {
    const RecordCase cases[] = {
        {"the larger pivot below is swapped up",
         {{1, 2, 3}, {4, 5, 6}},
         "R1 ↔ R2\n  4 5 | 6\n  1 2 | 3\n"
         "R1 ← R1 ÷ 4\n  1 1.25 | 1.5\n  1 2 | 3\n"
         "R2 ← R2 − 1·R1\n  1 1.25 | 1.5\n  0 0.75 | 1.5\n"
         "R2 ← R2 ÷ 0.75\n  1 1.25 | 1.5\n  0 1 | 2\n"
         "R1 ← R1 − 1.25·R2\n  1 0 | -1\n  0 1 | 2\n"},
        {"a tie keeps the upper row, a pivot of 1 is not divided by",
         {{1, 1, 3}, {-1, 1, 1}},
         "R2 ← R2 + 1·R1\n  1 1 | 3\n  0 2 | 4\n"
         "R2 ← R2 ÷ 2\n  1 1 | 3\n  0 1 | 2\n"
         "R1 ← R1 − 1·R2\n  1 0 | 1\n  0 1 | 2\n"},
        {"a zero below the pivot needs no addition",
         {{2, 0, 4}, {0, -4, 2}},
         "R1 ← R1 ÷ 2\n  1 0 | 2\n  0 -4 | 2\n"
         "R2 ← R2 ÷ (-4)\n  1 0 | 2\n  0 1 | -0.5\n"},
        {"a column without a pivot leaves no step",
         {{0, 1, 2}, {0, 2, 4}},
         "R1 ↔ R2\n  0 2 | 4\n  0 1 | 2\n"
         "R1 ← R1 ÷ 2\n  0 1 | 2\n  0 1 | 2\n"
         "R2 ← R2 − 1·R1\n  0 1 | 2\n  0 0 | 0\n"},
        {"nothing to do", {{1, 0, 7}, {0, 1, 8}}, ""},
    };
    for (const RecordCase& c : cases) {
        EXPECT_EQ(Recorded(c.rows), c.steps) << c.what;
    }
}

TEST(RowOperations, RecordingChangesNothingTheSolverWrites) {
    const Rows rows = {{0.2, -0.25, 1e-11, -3}, {0.3, -0.1, 0.2, 1.7}, {-0.1, 0.45, -0.25, 0}};
    AugmentedMatrix plain = MatrixOf(rows);
    AugmentedMatrix recorded = plain;
    RowOperations operations = {RowOperation{}}; // left over from before: replaced
    Solve(plain, 3, 3);
    Solve(recorded, 3, 3, &operations);
    EXPECT_EQ(std::memcmp(&plain, &recorded, sizeof plain), 0);
    EXPECT_EQ(operations.front().kind, RowOperationKind::Swap);
    EXPECT_EQ(operations.front().column, 1);
    EXPECT_EQ(operations.front().source, 2);
}

struct DecimalCase {
    const char* text;
    const char* exact; // "" when the text is refused
};

TEST(ExactNumbers, DecimalTextsReadAsExactFractions) {
    const DecimalCase cases[] = {
        {"0.175", "7/40"},
        {"-2.5", "-5/2"},
        {"12", "12"},
        {"0", "0"},
        {"-0", "0"},
        {"1E+16", "10000000000000000"},
        {"1.5E-3", "3/2000"},
        {"3.", "3"},
        {".5", "1/2"},
        {"", ""},
        {"-", ""},
        {".", ""},
        {"inf", ""},
        {"nan", ""},
        {"1,5", ""},
        {" 1", ""},
        {"1E", ""},
        {"1E+9999", ""},
        {"2..5", ""},
    };
    for (const DecimalCase& c : cases) {
        const auto value = RationalFromDecimal(c.text);
        EXPECT_EQ(value ? RationalText(*value) : "", c.exact) << c.text;
    }
}

TEST(ExactNumbers, AFractionOfMoreThanTwelveDigitsIsWrittenAsItsDecimal) {
    EXPECT_EQ(FractionOrDecimal(Rational(2, 15), 3), "2/15");
    EXPECT_EQ(FractionOrDecimal(Rational(123456, 789013), 3), "123456/789013");
    EXPECT_EQ(FractionOrDecimal(Rational(1234567, 789013), 3), "1.56");
    EXPECT_EQ(FractionOrDecimal(Rational(-1234567, 789013), 3), "-1.56");
    EXPECT_EQ(RationalDigits(Rational(-7, 40)), 3);
}

TEST(ExactNumbers, TheExactEliminationRefusesWhereTheDecimalsMissedAnEntry) {
    // The decimal solver saw no pivot in column 1 (1e-12 is below its threshold); exactly,
    // the entry is not zero, so the fractions cannot follow the same steps to a reduced form.
    ExactMatrix start(1, 1);
    start(1, 1) = Rational(1, 1000000000000LL);
    start(1, 2) = 1;
    EXPECT_FALSE(EliminateExactly(start, {}));
    const RowOperation scale{RowOperationKind::Scale, 1, 1, 1, 1e-12};
    ExactMatrix zero(1, 1);
    EXPECT_FALSE(EliminateExactly(zero, {scale}));
    const auto done = EliminateExactly(start, {scale});
    ASSERT_TRUE(done);
    EXPECT_EQ(RationalText(done->reduced(1, 2)), "1000000000000");
    EXPECT_EQ(RationalText(done->steps[0].factor), "1000000000000");
}

} // namespace
} // namespace ampora
