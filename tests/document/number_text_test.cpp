#include "document/number_text.h"

#include <gtest/gtest.h>

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
