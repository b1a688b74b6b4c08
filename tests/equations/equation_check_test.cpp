#include "equations/equation_check.h"

#include "support/solve_session.h"
#include "support/test_files.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <tuple>

namespace ampora {
namespace {

std::string Verdict(const Workspace& ws, const std::string& at, const std::string& text) {
    const int variable = EquationAtNode(ws, at);
    if (variable == 0) {
        return "no equation at " + at;
    }
    const EquationVerdict verdict = CheckEquation(ws, variable, text);
    if (!verdict.error.empty()) {
        return "unreadable: " + verdict.error;
    }
    if (verdict.equivalent) {
        return "right (" + verdict.equationOf + ")";
    }
    return "wrong" + (verdict.equationOf.empty() ? "" : " (" + verdict.equationOf + ")") + ": " +
           verdict.hint;
}

// Two supernodes: V1 with V4 = V1 - 10, V3 with V5 = V3 + 5; a 2 A source and a 25 ohm
// resistor each join two members of one supernode. The verdicts, hints and answers worked by
// hand are in tests/data/equations/equation_check.txt.
TEST(EquationCheck, EquationsAndAnswersForTheTwoSupernodesAreJudgedAsWorkedByHand) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("two_supernodes.amq"), 1);
    ASSERT_TRUE(session.solved);
    const std::pair<const char*, const char*> equations[] = {
        {"V1", "(V1-V2)/10 + V4/30 = 0"},
        {"V4", "V4/30 = (V2 - V1)/10"},
        {"V1", "3(V1-V2) + (V1-10) = 0"},
        {"V1", "0.1333V1 - 0.1V2 = 0.333"},
        {"V1", "0.13V1 - 0.1V2 = 0.33"},
        {"V1", "(V1-V2)/10 - V4/30 = 0"},
        {"V1", "(V1-V2)/10 = 0"},
        {"V1", "(V1+V2)/10 + V4/30 = 0"},
        {"V1", "(V1-V2)/10 + (V1+10)/30 = 0"},
        {"V1", "(V1-V2)/10 + V4/30 + 2 = 0"},
        {"V1", "(V1-V2)/10 + V4/20 = 0"},
        {"V1", "(V1-V2)/10 + V4/30 + I1 = 0"},
        {"V1", "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0"},
        {"V1", "V4 = V1 - 10"},
        {"V1", "V4 = V1 + 10"},
        {"V1", "(V1-V2)/10 + V4/30 + (V2-V3)/20 = 0"},
        {"V3", "(V3-V2)/20 + (V3+5)/50 = 0"},
        {"V3", "(V3-V2)/20 + (V3-5)/50 = 0"},
        {"V3", "(V3-V2)/20 + V5/50 + (V3-V5)/25 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 - 2 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 + V3 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0 = 1"},
        {"0", "V1 = 0"},
    };
    std::string dump;
    for (const auto& [at, text] : equations) {
        dump += std::string(at) + " | " + text + " | " + Verdict(session.ws, at, text) + "\n";
    }
    // V1 = 4.58333, V2 = 2.77778, V4 = -5.41667.
    const std::tuple<const char*, double, int> answers[] = {
        {"V1", 4.58, 3}, {"V1", 4.583333, 3}, {"V1", 4.59, 3}, {"V1", 4.6, 2},
        {"V1", 4.58, 4}, {"V1", -4.58, 3},    {"V1", 2.78, 3}, {"V4", -5.42, 3},
        {"0", 0, 3},     {"0", 0.001, 3},     {"Vx", 1, 3}};
    for (const auto& [name, value, sigFigs] : answers) {
        const AnswerVerdict verdict = CheckAnswer(session.ws, name, value, sigFigs);
        const std::string said = !verdict.known  ? "no such name"
                                 : verdict.right ? "right"
                                                 : verdict.hint;
        dump += std::string(name) + " = " + ShortestText(value) + " at " + std::to_string(sigFigs) +
                ": " + said + "\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("equations/equation_check.txt", dump));
    // I1 runs through the 10 V battery.
    const AnswerVerdict current =
        CheckAnswer(session.ws, "I1", session.ws.Topology.Branches[3].Current * 1.0001, 3);
    EXPECT_TRUE(current.known && current.right);
}

} // namespace
} // namespace ampora
