#include "analysis/gauss_jordan.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace ampora {
namespace {

AugmentedMatrix MatrixOf(const std::vector<std::vector<double>>& rows) {
    AugmentedMatrix matrix;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t k = 0; k < rows[i].size(); ++k) {
            matrix(static_cast<int>(i + 1), static_cast<int>(k + 1)) = rows[i][k];
        }
    }
    return matrix;
}

// "a b | c" per row, the numbers in their shortest text ("-0" shows a negative zero).
std::string Rows(const AugmentedMatrix& matrix, int rows, int columns) {
    std::string out;
    for (int i = 1; i <= rows; ++i) {
        for (int k = 1; k <= columns + 1; ++k) {
            out += (k == 1 ? "" : k == columns + 1 ? " | " : " ") + ShortestText(matrix(i, k));
        }
        out += "\n";
    }
    return out;
}

std::string Solved(const std::vector<std::vector<double>>& rows) {
    AugmentedMatrix matrix = MatrixOf(rows);
    const int n = static_cast<int>(rows.size());
    Solve(matrix, n, n);
    return Rows(matrix, n, n);
}

TEST(GaussJordan, TheLargestPivotIsSwappedUpAndEveryColumnEndsAsAUnitColumn) {
    EXPECT_EQ(Solved({{1, 2, 3}, {4, 5, 6}}), "1 0 | -1\n"
                                              "0 1 | 2\n");
}

TEST(GaussJordan, AThreeUnknownSystemReadsOffItsSolution) {
    AugmentedMatrix matrix = MatrixOf({{2, 1, -1, 8}, {-3, -1, 2, -11}, {-2, 1, 2, -3}});
    Solve(matrix, 3, 3);
    EXPECT_NEAR(matrix(1, 4), 2, 1e-12);
    EXPECT_NEAR(matrix(2, 4), 3, 1e-12);
    EXPECT_NEAR(matrix(3, 4), -1, 1e-12);
    for (int i = 1; i <= 3; ++i) {
        for (int k = 1; k <= 3; ++k) {
            EXPECT_EQ(matrix(i, k), i == k ? 1.0 : 0.0) << i << "," << k;
        }
    }
}

TEST(GaussJordan, OnATieThePivotSearchKeepsTheUpperRow) {
    // Swapping would leave 1 1 | -1 in the first row of this inconsistent system.
    EXPECT_EQ(Solved({{1, 1, 3}, {-1, -1, 1}}), "1 1 | 3\n"
                                                "0 0 | 4\n");
}

TEST(GaussJordan, AColumnOfZerosGetsNoPivotAndTheNextColumnTakesItsRow) {
    EXPECT_EQ(Solved({{0, 1, 2}, {0, 2, 4}}), "0 1 | 2\n"
                                              "0 0 | 0\n");
}

TEST(GaussJordan, TheThresholdIsAbsoluteAndStrictForPivotsAndForTheCleanUp) {
    // 1e-10 is no pivot and is not cleaned up; 2e-10 is a pivot; 5e-11 shows as 0.
    EXPECT_EQ(Solved({{1e-10, 0, 1}, {0, 2e-10, 5e-11}}), "0 1 | 0.25\n"
                                                          "0.0000000001 0 | 1\n");
    EXPECT_EQ(Solved({{1, 0, 5e-11}, {0, 1, -5e-11}}), "1 0 | 0\n"
                                                       "0 1 | 0\n");
}

TEST(GaussJordan, NegativeZerosAreCleanedToZero) {
    EXPECT_EQ(Solved({{2, -0.0, -0.0}, {-0.0, 4, 8}}), "1 0 | 0\n"
                                                       "0 1 | 2\n");
}

TEST(GaussJordan, ARowWithAZeroUnderThePivotStillTakesTheInfinitiesOfThePivotRow) {
    // 0 times infinity is no number: the second row must not come out as solved.
    AugmentedMatrix matrix = MatrixOf({{1, INFINITY, 1}, {0, 1, 2}});
    Solve(matrix, 2, 2);
    EXPECT_EQ(matrix(1, 2), INFINITY);
    EXPECT_TRUE(std::isnan(matrix(2, 2)));
    EXPECT_EQ(matrix(2, 3), 2);
}

TEST(GaussJordan, AnInfiniteMultipleOfAnEarlierPivotColumnIsNoNumberEither) {
    // The first row keeps its infinity into the second step, whose pivot row holds 0 under
    // the first pivot: infinity times 0 must reach the first row's own pivot.
    AugmentedMatrix matrix = MatrixOf({{1, INFINITY, 0}, {1, 1, 3}});
    Solve(matrix, 2, 2);
    EXPECT_TRUE(std::isnan(matrix(1, 1)));
    EXPECT_EQ(matrix(2, 2), 1);
}

TEST(GaussJordan, OnlyTheGivenRowsAndColumnsChange) {
    AugmentedMatrix matrix = MatrixOf({{2, 4, 7}, {3, 9, 1e-12}, {1e-12, 5, 6}});
    matrix(1, 5) = 1e-12;
    Solve(matrix, 1, 1);
    EXPECT_EQ(Rows(matrix, 3, 3), "1 2 7 | 0\n"
                                  "3 9 0.000000000001 | 0\n"
                                  "0.000000000001 5 6 | 0\n");
    EXPECT_EQ(matrix(1, 5), 1e-12);
}

TEST(GaussJordan, ASystemLargerThanTheMatrixIsRefusedBeforeAnythingChanges) {
    AugmentedMatrix matrix = MatrixOf({{2, 4}});
    EXPECT_THROW(Solve(matrix, 21, 21), SlotOutOfRange);
    EXPECT_THROW(Solve(matrix, 20, 21), SlotOutOfRange);
    EXPECT_EQ(matrix(1, 1), 2);
    Solve(matrix, 0, 0);
    EXPECT_EQ(matrix(1, 1), 2);
}

} // namespace
} // namespace ampora
