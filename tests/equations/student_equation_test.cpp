#include "equations/student_equation.h"

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

TEST(StudentEquation, WhatIsAcceptedReadsAsOneLinearForm) {
    const struct {
        const char* text;
        const char* form;
    } cases[] = {
        {"(V1-V2)/10 + V2/30 = 0", "+0.1*V1 -0.0666667*V2 +0"},
        {"0 = (V2-V1)/10", "+0.1*V1 -0.1*V2 +0"},
        {"0.5V1 = 2", "+0.5*V1 -2"},
        {"2(V1-V2) = 1E-3", "+2*V1 -2*V2 -0.001"},
        {"-(-V1) = .5e+1", "+1*V1 -5"},
        {"V1 \u2212 V2 = 3", "+1*V1 -1*V2 -3"},   // the Unicode minus
        {"V1 \u00D7 2 = V10", "+2*V1 -1*V10 +0"}, // V10 is not V1 then 10
        {"(V1-0)/5 = 0", "+0.2*V1 +0"},
        {"Va b + I1 = 1/4", "+1*Va b +1*I1 -0.25"},
        {"V1/2/5*3 = 0", "+0.3*V1 +0"},
        {"2*3*V1 = V1*4", "+2*V1 +0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Form(c.text), c.form) << c.text;
    }
}

TEST(StudentEquation, EachMistakeSaysWhereAndWhy) {
    const struct {
        std::string text;
        const char* message;
    } cases[] = {
        {"", "the equation is empty"},
        {"   ", "the equation is empty"},
        {"(V1-V2)/10 + (V1 = 0", "at character 18: a closing parenthesis is missing"},
        {"(V1-V2)/10 + V1) = 0", "at character 16: this closing parenthesis has no opening one"},
        {"V1 + V2", "at character 8: the equation ends without \"=\""},
        {"V1 = V2 = 0", "at character 9: a second \"=\"; an equation has exactly one"},
        {"= V1", "at character 1: there is nothing before \"=\""},
        {"V1 =  ", "at character 7: there is nothing after \"=\""},
        {"V1 + = 0", "at character 6: a number or a name is missing"},
        {"V1 * / 2 = 0", "at character 6: a number or a name is missing"},
        {"() = 0", "at character 2: a number or a name is missing"},
        {"V1 V2 = 0", "at character 4: an operator is missing before \"V2\""},
        {"(V1)(V2) = 0", "at character 5: an operator is missing before \"(\""},
        {"(V1 2) = 0", "at character 5: an operator is missing before \"2\""},
        {"Vx - V1 = 0", "at character 1: \"Vx\" is not the name of a node"},
        {"V12 = 0", "at character 1: \"V12\" is not the name of a node"},
        {"V1^2 = 0", "at character 3: \"^\" cannot be part of an equation"},
        {"V1 = 0,5", "at character 7: \",\" cannot be part of an equation"},
        {"\u2212V1 = \u00B0", "at character 7: \"\u00B0\" cannot be part of an equation"},
        {"V1 = 1.2.3", "at character 9: a number has a second decimal point"},
        {"V1 = 1E999", "at character 6: the number \"1E999\" is too large"},
        {"V1/0 = 2", "at character 3: division by zero"},
        {"V1/(V2-V2) = 2", "at character 3: division by zero"},
        {"5/V1 = 2", "at character 2: the divisor holds an unknown; divide only by numbers"},
        {"V1*V2 = 2",
         "at character 3: two unknowns are multiplied; multiply an unknown only by a number"},
        {"2V1(V2) = 0", "at character 4: an operator is missing before \"(\""},
        {"1E300*1E300*V1 = 0", "at character 1: the numbers grow too large to work with"},
        {std::string(300, '(') + "V1 = 0", "at character 202: the equation is nested too deeply"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Form(c.text), c.message) << c.text;
    }
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
