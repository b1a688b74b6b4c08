#include "analysis/format_number.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

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

TEST(FormatNumber, ExactTiesRoundToEvenEverywhere) {
    // 0.125 and 0.375 are exact in binary, so these are true ties.
    EXPECT_EQ(Table(2, {0.125, 0.375, 2.5, 3.5}), "0.12\n0.38\n2.5\n3.5\n");
    EXPECT_EQ(Table(1, {2.5, 3.5, 0.25}), "2\n4\n0.2\n");
}

// The plain form is the value rounded in scientific form, read back and written in its
// shortest decimal. Checked here the long way round, with the library's own conversions,
// over values of every size of the plain range, exact binary ties, and powers of ten with
// their neighbours.
TEST(FormatNumber, ThePlainFormIsTheScientificRoundingReadBack) {
    std::mt19937_64 random(20240611);
    std::vector<double> values;
    for (int k = 0; k < 3000; ++k) {
        values.push_back(std::ldexp(static_cast<double>(random() % (1u << 20)),
                                    -static_cast<int>(random() % 30)));
        values.push_back(std::exp(static_cast<double>(random() % 200000) / 10000 - 9.2));
    }
    for (const double power : {0.0001, 0.001, 0.01, 0.1, 1.0, 10.0, 100.0, 1000.0, 10000.0}) {
        values.push_back(std::nextafter(power, 0.0));
        values.push_back(power);
        values.push_back(std::nextafter(power, 1e9));
    }
    std::string differences;
    for (const double magnitude : values) {
        for (const double value : {magnitude, -magnitude}) {
            if (!(std::fabs(value) > 0.0001 && std::fabs(value) < 10000)) {
                continue;
            }
            for (int figures = 1; figures <= 17; ++figures) {
                char scientific[64];
                const auto sci = std::to_chars(scientific, scientific + sizeof scientific, value,
                                               std::chars_format::scientific, figures - 1);
                double rounded = 0;
                std::from_chars(scientific, sci.ptr, rounded);
                char plain[400];
                const auto fixed =
                    std::to_chars(plain, plain + sizeof plain, rounded, std::chars_format::fixed);
                const std::string expected(plain, fixed.ptr);
                const std::string shown = FormatNumber(value, figures);
                if (shown != expected && differences.size() < 2000) {
                    differences += std::to_string(value) + " to " + std::to_string(figures) +
                                   " figures: " + shown + " instead of " + expected + "\n";
                }
            }
        }
    }
    EXPECT_EQ(differences, "");
}

// Labels put numbers together with other text in room of MaxFormattedSize: the longest
// texts of every route, for figure counts far past any setting, stay inside it.
TEST(FormatNumber, TheLongestTextsFitTheRoomAnnounced) {
    std::string overruns;
    for (int figures = 0; figures <= 80; ++figures) {
        for (const double value :
             {-1.7976931348623157e308, -2.2250738585072014e-308, -1.2345678901234567e-100,
              -9999.999999999999, -0.00012345678901234567, -1e-8,
              -std::numeric_limits<double>::infinity(), std::nan("")}) {
            std::string room(MaxFormattedSize(figures) + 16, '#');
            const auto written = static_cast<std::size_t>(
                WriteFormattedNumber(room.data(), value, figures) - room.data());
            if (written > MaxFormattedSize(figures) ||
                room.find_first_not_of('#', written) != std::string::npos) {
                overruns += std::to_string(figures) + " figures: " + room + "\n";
            }
        }
    }
    EXPECT_EQ(overruns, "");
}

} // namespace
} // namespace ampora
