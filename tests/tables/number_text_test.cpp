#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace ampora {
namespace {

// Each text with what ParseFloat and ParseInteger make of it, "-" for a refusal.
std::string ParseDump(const std::vector<std::string>& texts) {
    std::string out;
    for (const std::string& text : texts) {
        const auto single = ParseFloat(text);
        const auto whole = ParseInteger(text);
        out += "[" + text + "] " + (single ? ShortestText(*single) : "-") + " " +
               (whole ? std::to_string(*whole) : "-") + "\n";
    }
    return out;
}

// Each single as the files and labels write it, then as a computed value to seven digits.
TEST(NumberText, SinglesArePlainUpToFifteenDigitsThenInTheOneScientificStyle) {
    std::string out;
    for (const float value :
         {100000.0f, 0.0001f, 1.1f + 2.2f, 123456789.0f, 16777216.0f, 1e14f, 1e15f, 1.5e-14f,
          -2.5e-20f, 3.4028235e38f, 1e-45f, std::numeric_limits<float>::infinity()}) {
        out += ShortestText(value) + " | " + SingleText(value) + "\n";
        EXPECT_TRUE(!std::isfinite(value) || ParseFloat(ShortestText(value)) == value) << value;
    }
    EXPECT_EQ(out, "100000 | 100000\n"
                   "0.0001 | 0.0001\n"
                   "3.3000002 | 3.3\n"
                   "123456790 | 123456800\n"
                   "16777216 | 16777220\n"
                   "100000000000000 | 100000000000000\n"
                   "1E+15 | 1E+15\n"
                   "1.5E-14 | 1.5E-14\n"
                   "-2.5E-20 | -2.5E-20\n"
                   "3.4028235E+38 | 3.402823E+38\n"
                   "1E-45 | 1.401298E-45\n"
                   "inf | inf\n");
    EXPECT_EQ(ShortestText(1e-10) + " " + ShortestText(-1e-16), "0.0000000001 -1E-16");
}

TEST(ParseFloat, WholeNumbersOfEveryLengthReadExactly) {
    // Texts of nine characters or more are scanned without an end check per digit, shorter
    // ones with it: the seven-digit limit of the short cut must hold in both.
    EXPECT_EQ(ParseDump({"0", "-0", "0007", "1234567", "-1234567", "12345678", "-12345678",
                         "123456789", "000000001", "-00000001", "4294967297", "16777217"}),
              "[0] 0 0\n"
              "[-0] -0 0\n"
              "[0007] 7 7\n"
              "[1234567] 1234567 1234567\n"
              "[-1234567] -1234567 -1234567\n"
              "[12345678] 12345678 12345678\n"
              "[-12345678] -12345678 -12345678\n"
              "[123456789] 123456790 123456789\n"
              "[000000001] 1 1\n"
              "[-00000001] -1 -1\n"
              "[4294967297] 4294967300 4294967297\n"
              "[16777217] 16777216 16777217\n");
}

TEST(ParseFloat, SignsPointsAndBlanksAroundDigits) {
    EXPECT_EQ(ParseDump({"", "-", "+", "+5", "+-5", "--5", "5-", "1234567.5", "-1234567e1", " 5",
                         "5 ", "1,2", "12345678,"}),
              "[] - -\n"
              "[-] - -\n"
              "[+] - -\n"
              "[+5] 5 5\n"
              "[+-5] - -\n"
              "[--5] - -\n"
              "[5-] - -\n"
              "[1234567.5] 1234567.5 -\n"
              "[-1234567e1] -12345670 -\n"
              "[ 5] - -\n"
              "[5 ] - -\n"
              "[1,2] - -\n"
              "[12345678,] - -\n");
}

} // namespace
} // namespace ampora
