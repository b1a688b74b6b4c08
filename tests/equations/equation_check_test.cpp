#include "equations/equation_check.h"

#include "support/solve_session.h"
#include "support/test_files.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <sstream>

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
// resistor each join two members of one supernode. The equations ("node | text | verdict")
// and answers ("name = value at figures: verdict") with the verdicts and hints worked by hand
// are in tests/data/equations/equation_check.txt; V1 = 4.58333, V2 = 2.77778, V4 = -5.41667.
TEST(EquationCheck, EquationsAndAnswersForTheTwoSupernodesAreJudgedAsWorkedByHand) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("two_supernodes.amq"), 1);
    ASSERT_TRUE(session.solved);
    std::istringstream lines(test::ReadBytes(std::filesystem::path(AMPORA_SOURCE_DIR) /
                                             "tests/data/equations/equation_check.txt"));
    std::string line, dump;
    int cases = 0;
    for (; std::getline(lines, line); ++cases) {
        if (const auto bar = line.find(" | "); bar != std::string::npos) {
            const std::string at = line.substr(0, bar), rest = line.substr(bar + 3);
            const std::string text = rest.substr(0, rest.find(" | "));
            dump += at + " | " + text + " | " + Verdict(session.ws, at, text) + "\n";
            continue;
        }
        const std::string name = line.substr(0, line.find(" = "));
        const double value =
            ParseDouble(line.substr(name.size() + 3, line.find(" at ") - name.size() - 3))
                .value_or(NAN);
        const int sigFigs = line[line.find(" at ") + 4] - '0';
        const AnswerVerdict verdict = CheckAnswer(session.ws, name, value, sigFigs);
        const std::string said = !verdict.known  ? "no such name"
                                 : verdict.right ? "right"
                                                 : verdict.hint;
        dump += name + " = " + ShortestText(value) + " at " + std::to_string(sigFigs) + ": " +
                said + "\n";
    }
    EXPECT_EQ(cases, 35);
    EXPECT_EQ(dump, test::ExpectedText("equations/equation_check.txt", dump));
    // I1 runs through the 10 V battery.
    const AnswerVerdict current =
        CheckAnswer(session.ws, "I1", session.ws.Topology.Branches[3].Current * 1.0001, 3);
    EXPECT_TRUE(current.known && current.right);
}

} // namespace
} // namespace ampora
