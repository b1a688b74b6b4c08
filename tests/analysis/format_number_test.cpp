#include "analysis/format_number.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace ampora {
namespace {

// Each value at the figures of its row, as the labels and equations write it; worked by hand
// in tests/data/analysis/format_number.txt.
TEST(FormatNumber, EachValueAtEachCountOfFiguresAsWorkedByHand) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<int, std::vector<double>> rows[] = {
        {3,
         {0, 5e-9, -5e-9, 0.0001, 0.00012345, 0.15, 2, -2.5, 123.456, 1234.5, 9999.6, 10000, 12345,
          3e-7, -0.00002}},
        // The bounds are exclusive, and rounding happens before the plain form is chosen.
        {3, {-0.0001, 0.000100001, 9999.4, -9999.6, 1e-8, 9.9999e-9, 1e300, -4.5e-300}},
        {1, {0.17, 123.456, 12345, -0.5, 9.6, 1e-8}}, // the point of the pattern stays
        {4,
         {0.00010000000000000002, 0.09999999999999999, 0.1, 9999.999999999998, 1.0000000000000002,
          infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}},
        {20, {2.0 / 3.0, 1e-5}}, // past what a double holds
        // 0.125 and 0.375 are exact in binary, so these are true ties: to even.
        {2, {0.125, 0.375, 2.5, 3.5}},
        {1, {2.5, 3.5, 0.25}},
    };
    std::string out;
    for (const auto& [figures, values] : rows) {
        out += std::to_string(figures) + ":";
        for (const double value : values) {
            out += " " + FormatNumber(value, figures);
        }
        out += "\n";
    }
    for (int figures = 1; figures <= 8; ++figures) {
        out += std::to_string(figures) + ": " + FormatNumber(2.0 / 3.0, figures) + " " +
               FormatNumber(-98765.4321, figures) + " " + FormatNumber(1.0 / 7000.0, figures) +
               "\n";
    }
    EXPECT_EQ(out, test::ExpectedText("analysis/format_number.txt", out));
}

} // namespace
} // namespace ampora
