#include "analysis/format_number.h"
#include "support/arrow_cases.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace ampora {
namespace {

// "FIGURES VALUE" as the labels and equations write it; worked by hand in
// tests/data/analysis/format_number.txt.
TEST(FormatNumber, EachValueAtEachCountOfFiguresAsWorkedByHand) {
    const std::string name = "analysis/format_number.txt";
    const std::string dump = test::ReplayArrowCases(name, [](const std::string& input) {
        char* value = nullptr;
        const long figures = std::strtol(input.c_str(), &value, 10);
        return FormatNumber(std::strtod(value, nullptr), static_cast<int>(figures));
    });
    ASSERT_GT(dump.size(), 1000u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

} // namespace
} // namespace ampora
