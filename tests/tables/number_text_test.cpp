#include "support/test_files.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace ampora {
namespace {

// Each single as the files and labels write it, then as a computed value to seven digits;
// each text with what ParseFloat and ParseInteger make of it, "-" for a refusal. Worked by
// hand in tests/data/tables/number_text.txt.
TEST(NumberText, SinglesAreWrittenAndTextsReadAsWorkedByHand) {
    std::string out;
    for (const float value :
         {100000.0f, 0.0001f, 1.1f + 2.2f, 123456789.0f, 16777216.0f, 1e14f, 1e15f, 1.5e-14f,
          -2.5e-20f, 3.4028235e38f, 1e-45f, std::numeric_limits<float>::infinity()}) {
        out += ShortestText(value) + " | " + SingleText(value) + "\n";
        EXPECT_TRUE(!std::isfinite(value) || ParseFloat(ShortestText(value)) == value) << value;
    }
    out += ShortestText(1e-10) + " | " + ShortestText(-1e-16) + " (doubles)\n";
    // Texts of nine characters or more are scanned without an end check per digit, shorter
    // ones with it: the seven-digit limit of the short cut must hold in both.
    for (const std::string text :
         {"0",          "-0",        "0007",      "1234567",   "-1234567",
          "12345678",   "-12345678", "123456789", "000000001", "-00000001",
          "4294967297", "16777217",  "",          "-",         "+",
          "+5",         "+-5",       "--5",       "5-",        "1234567.5",
          "-1234567e1", " 5",        "5 ",        "1,2",       "12345678,"}) {
        const auto single = ParseFloat(text);
        const auto whole = ParseInteger(text);
        out += "[" + text + "] " + (single ? ShortestText(*single) : "-") + " " +
               (whole ? std::to_string(*whole) : "-") + "\n";
    }
    EXPECT_EQ(out, test::ExpectedText("tables/number_text.txt", out));
}

} // namespace
} // namespace ampora
