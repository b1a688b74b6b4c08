#include "equations/student_equation.h"
#include "support/arrow_cases.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

namespace ampora {
namespace {

const std::vector<std::string> kNames = {"V1", "V2", "V10", "Va b", "I1"};

// The form as text: each nonzero coefficient with its name, then the constant.
std::string Form(std::string_view text) {
    const StudentEquation read = ReadStudentEquation(text, kNames);
    if (!read.Read()) {
        return read.error;
    }
    std::string form;
    char number[32];
    for (std::size_t k = 0; k < kNames.size(); ++k) {
        if (read.sum.coefficients[k] != 0) {
            std::snprintf(number, sizeof number, "%+.6g", read.sum.coefficients[k]);
            form += std::string(number) + "*" + kNames[k] + " ";
        }
    }
    std::snprintf(number, sizeof number, "%+.6g", read.sum.constant);
    return form + number;
}

// What is accepted reads as one linear form; each mistake says where and why. Worked by hand
// in tests/data/equations/student_equation.txt.
TEST(StudentEquation, EachTextReadsAsTheFormOrTheMistakeWorkedByHand) {
    const std::string dump = test::ReplayArrowCases("equations/student_equation.txt", Form);
    ASSERT_GT(dump.size(), 2000u);
    EXPECT_EQ(dump, test::ExpectedText("equations/student_equation.txt", dump));
}

// Any jumble of the pieces of equations is read or refused with a place inside the text (or
// just past its end), never anything else.
TEST(StudentEquation, AJumbleIsReadOrRefusedAtAPlaceInIt) {
    const char* pieces[] = {"V1", "V2", "V10", "Va b", "(",      ")", "+",      "-",  "*", "/",
                            "2",  ".5", "E3",  " ",    "\u2212", "#", "1e-400", "0.", "V"};
    std::mt19937 random(17);
    int read = 0;
    for (int trial = 0; trial < 3000; ++trial) {
        std::string text;
        std::size_t characters = 0;
        const int count = static_cast<int>(random() % 10);
        for (int k = 0; k < count; ++k) {
            if (k == count / 2 && random() % 10 != 0) {
                text += "="; // mostly one, in the middle
                ++characters;
            }
            const std::string piece = pieces[random() % std::size(pieces)];
            text += piece;
            characters += piece == "\u2212" ? 1 : piece.size();
        }
        const StudentEquation result = ReadStudentEquation(text, kNames);
        if (result.Read()) {
            ++read;
            EXPECT_EQ(result.sum.coefficients.size(), kNames.size());
            continue;
        }
        if (result.error == "the equation is empty") {
            EXPECT_EQ(text.find_first_not_of(' '), std::string::npos) << text;
            continue;
        }
        int at = 0;
        ASSERT_EQ(std::sscanf(result.error.c_str(), "at character %d: ", &at), 1)
            << text << " -> " << result.error;
        EXPECT_GE(at, 1) << text;
        EXPECT_LE(static_cast<std::size_t>(at), characters + 1) << text << " -> " << result.error;
    }
    EXPECT_GT(read, 30); // the jumbles do not all fail the same way
}

} // namespace
} // namespace ampora
