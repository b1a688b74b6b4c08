#include "analysis/format_number.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace ampora {
namespace {

std::string Table(int sigFigs, std::initializer_list<double> values) {
    std::string out;
    for (const double value : values) {
        out += FormatNumber(value, sigFigs) + "\n";
    }
    return out;
}

TEST(FormatNumber, ThreeFiguresFollowTheTable) {
    EXPECT_EQ(Table(3, {0, 5e-9, -5e-9, 0.0001, 0.00012345, 0.15, 2, -2.5, 123.456, 1234.5, 9999.6,
                        10000, 12345, 3e-7, -0.00002}),
              "0\n0\n0\n1.00E-4\n0.000123\n0.15\n2\n-2.5\n123\n1230\n10000\n1.00E+4\n"
              "1.23E+4\n3.00E-7\n-2.00E-5\n");
}

TEST(FormatNumber, OneFigureKeepsThePointOfThePattern) {
    EXPECT_EQ(Table(1, {0.17, 123.456, 12345, -0.5, 9.6, 1e-8}),
              "0.2\n100\n1.E+4\n-0.5\n10\n1.E-8\n");
}

TEST(FormatNumber, EveryFigureCountFromOneToEight) {
    std::string out;
    for (int figures = 1; figures <= 8; ++figures) {
        out += FormatNumber(2.0 / 3.0, figures) + " " + FormatNumber(-98765.4321, figures) + " " +
               FormatNumber(1.0 / 7000.0, figures) + "\n";
    }
    EXPECT_EQ(out, "0.7 -1.E+5 0.0001\n"
                   "0.67 -9.9E+4 0.00014\n"
                   "0.667 -9.88E+4 0.000143\n"
                   "0.6667 -9.877E+4 0.0001429\n"
                   "0.66667 -9.8765E+4 0.00014286\n"
                   "0.666667 -9.87654E+4 0.000142857\n"
                   "0.6666667 -9.876543E+4 0.0001428571\n"
                   "0.66666667 -9.8765432E+4 0.00014285714\n");
}

TEST(FormatNumber, BoundsAreExclusiveAndRoundingHappensBeforeThePlainForm) {
    EXPECT_EQ(Table(3, {-0.0001, 0.000100001, 9999.4, -9999.6, 1e-8, 9.9999e-9, 1e300, -4.5e-300}),
              "-1.00E-4\n0.0001\n10000\n-10000\n1.00E-8\n0\n1.00E+300\n0\n");
}

TEST(FormatNumber, NeighboursOfPowersOfTenAndValuesThatAreNoNumber) {
    EXPECT_EQ(Table(4, {0.00010000000000000002, 0.09999999999999999, 0.1, 9999.999999999998,
                        1.0000000000000002, std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::quiet_NaN()}),
              "0.0001\n0.1\n0.1\n10000\n1\nInfinity\n-Infinity\nNaN\n");
    EXPECT_EQ(Table(20, {2.0 / 3.0, 1e-5}),
              "0.6666666666666666\n1.0000000000000000818E-5\n"); // past what a double holds
}

TEST(FormatNumber, ExactTiesRoundToEvenEverywhere) {
    // 0.125 and 0.375 are exact in binary, so these are true ties.
    EXPECT_EQ(Table(2, {0.125, 0.375, 2.5, 3.5}), "0.12\n0.38\n2.5\n3.5\n");
    EXPECT_EQ(Table(1, {2.5, 3.5, 0.25}), "2\n4\n0.2\n");
}

} // namespace
} // namespace ampora
