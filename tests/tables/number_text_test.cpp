#include "support/arrow_cases.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

namespace ampora {
namespace {

// Singles and doubles written, texts read; worked by hand in tests/data/tables/number_text.txt.
TEST(NumberText, SinglesAreWrittenAndTextsReadAsWorkedByHand) {
    const std::string name = "tables/number_text.txt";
    const std::string dump = test::ReplayArrowCases(name, [](const std::string& input) {
        if (input.starts_with("single ")) {
            const float value = std::strtof(input.c_str() + 7, nullptr);
            EXPECT_TRUE(!std::isfinite(value) || ParseFloat(ShortestText(value)) == value) << input;
            return ShortestText(value) + " | " + SingleText(value);
        }
        if (input.starts_with("double ")) {
            return ShortestText(std::strtod(input.c_str() + 7, nullptr));
        }
        const std::string text = input.substr(6, input.size() - 7); // read [TEXT]
        const auto single = ParseFloat(text);
        const auto whole = ParseInteger(text);
        return (single ? ShortestText(*single) : "-") + " " +
               (whole ? std::to_string(*whole) : "-");
    });
    ASSERT_GT(dump.size(), 800u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

} // namespace
} // namespace ampora
