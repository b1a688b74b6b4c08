// The elimination on small systems: each step it records, the matrix a replay of the record
// holds after it, and the solver's result, compared whole with the hand-checked
// tests/data/analysis/gauss_jordan.txt. The replay must end at the solver's result to the bit.

#include "analysis/exact_elimination.h"
#include "analysis/gauss_jordan.h"
#include "analysis/row_operation_text.h"
#include "support/case_file.h"
#include "support/test_files.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <sstream>
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

// "a b | c" per row, the numbers in their shortest text ("-0" shows a negative zero).
std::string Text(const AugmentedMatrix& matrix, int rows, int columns) {
    std::string out;
    for (int i = 1; i <= rows; ++i) {
        for (int k = 1; k <= columns + 1; ++k) {
            const double v = matrix(i, k); // a NaN's sign differs between machines
            out += k == 1 ? "  " : k == columns + 1 ? " | " : " ";
            out += std::isnan(v) ? "nan" : ShortestText(v);
        }
        out += "\n";
    }
    return out;
}

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
        text += DescribeRowOperation(operation, 4).Joined() + "\n" + Text(replay.Matrix(), n, n);
    }
    replay.ClearNegligible();
    EXPECT_EQ(std::memcmp(&replay.Matrix(), &solved, sizeof solved), 0) << text;
    return text + "solved\n" + Text(solved, n, n);
}

TEST(GaussJordan, EachSystemIsReducedStepByStepAsWorkedByHand) {
    const std::string name = "analysis/gauss_jordan.txt";
    const std::string dump =
        test::ReplayCases(name, {"rows "}, [](const std::string&, const auto& inputs) {
            Rows rows(1); // "rows 1 2 3; 4 5 6"
            std::istringstream numbers(inputs.at(0).substr(5));
            for (std::string number; numbers >> number;) {
                rows.back().push_back(std::strtod(number.c_str(), nullptr));
                if (number.ends_with(';')) {
                    rows.emplace_back();
                }
            }
            return Recorded(rows);
        });
    ASSERT_GT(dump.size(), 1500u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

TEST(GaussJordan, OnlyTheGivenRowsAndColumnsChangeAndTooLargeASystemIsRefused) {
    AugmentedMatrix matrix = MatrixOf({{2, 4, 7}, {3, 9, 1e-12}, {1e-12, 5, 6}});
    matrix(1, 5) = 1e-12;
    Solve(matrix, 1, 1);
    EXPECT_EQ(Text(matrix, 3, 3), "  1 2 7 | 0\n"
                                  "  3 9 0.000000000001 | 0\n"
                                  "  0.000000000001 5 6 | 0\n");
    EXPECT_EQ(matrix(1, 5), 1e-12);

    EXPECT_THROW(Solve(matrix, 21, 21), SlotOutOfRange);
    EXPECT_THROW(Solve(matrix, 20, 21), SlotOutOfRange);
    Solve(matrix, 0, 0);
    EXPECT_EQ(Text(matrix, 1, 1), "  1 | 2\n"); // untouched by the refusals and by 0 by 0
}

TEST(GaussJordan, RecordingChangesNothingTheSolverWritesAndReplacesAnOldRecord) {
    const Rows rows = {{0.2, -0.25, 1e-11, -3}, {0.3, -0.1, 0.2, 1.7}, {-0.1, 0.45, -0.25, 0}};
    AugmentedMatrix plain = MatrixOf(rows);
    AugmentedMatrix recorded = plain;
    RowOperations operations = {RowOperation{}};
    Solve(plain, 3, 3);
    Solve(recorded, 3, 3, &operations);
    EXPECT_EQ(std::memcmp(&plain, &recorded, sizeof plain), 0);
    EXPECT_EQ(DescribeRowOperation(operations.front(), 4).Joined(), "R1 ↔ R2");
}

// Decimal texts read as exact fractions ("-" for a refusal), and fractions written as
// themselves up to twelve digits, as a decimal beyond; worked by hand in
// tests/data/analysis/exact_numbers.txt.
TEST(ExactNumbers, DecimalTextsReadAsExactFractionsAndLongFractionsAreWrittenAsDecimals) {
    std::string dump;
    for (const char* text : {"0.175", "-2.5", "12", "0", "-0", "1E+16", "1.5E-3", "3.", ".5", "",
                             "-", ".", "inf", "nan", "1,5", " 1", "1E", "1E+9999", "2..5"}) {
        const auto value = RationalFromDecimal(text);
        dump += std::string("[") + text + "] " + (value ? RationalText(*value) : "-") + "\n";
    }
    for (const Rational& r : {Rational(2, 15), Rational(123456, 789013), Rational(1234567, 789013),
                              Rational(-1234567, 789013), Rational(-7, 40)}) {
        dump += RationalText(r) + ": " + FractionOrDecimal(r, 3) + ", " +
                std::to_string(RationalDigits(r)) + " digits\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("analysis/exact_numbers.txt", dump));
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
