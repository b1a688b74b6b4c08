#include "support/cli_run.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <regex>

namespace ampora {
namespace {

using test::Cli;
using test::CliRun;

std::string Example(const std::string& name) {
    return (test::ExamplesDir() / name).string();
}

TEST(CliCheckEquation, TheVerdictAndItsExitCode) {
    const std::string file = Example("two_supernodes.amq");
    const struct {
        const char* at;
        const char* equation;
        int code;
        const char* out; // on one line
        const char* err;
    } cases[] = {
        {"V4", "(V1-V2)/10 + V4/30 = 0", 0,
         "{\"at\": \"supernode V1\",\"equation\": \"(V1-V2)/10 + V4/30 = 0\","
         "\"equivalent\": true,\"equation_of\": \"V1\",\"hint\": null}",
         ""},
        {"V1", "-(V2-V1)/10 - (V2-V3)/20 = V2/40", 1,
         "{\"at\": \"supernode V1\",\"equation\": \"-(V2-V1)/10 - (V2-V3)/20 = V2/40\","
         "\"equivalent\": false,\"equation_of\": \"V2\","
         "\"hint\": \"this is the equation of node V2, not of supernode V1\"}",
         ""},
        {"V1", "(V1-V2/10 = 0", 2, "",
         "ampora-cli: the equation cannot be read: at character 11: a closing parenthesis is "
         "missing\n"},
        {"V9", "V1 = 0", 2, "", "ampora-cli: --at V9: no node is named V9\n"},
        {"0", "V1 = 0", 2, "",
         "ampora-cli: --at 0: 0 is the reference node, which has no equation\n"},
    };
    for (const auto& c : cases) {
        const CliRun run = Cli({"check-equation", "--autoname", file, "--at", c.at, c.equation});
        EXPECT_EQ(run.code, c.code) << c.equation;
        EXPECT_EQ(test::OneLine(run.out), c.out) << c.equation;
        EXPECT_EQ(run.err, c.err) << c.equation;
    }
}

TEST(CliCheckEquation, ACircuitThatDoesNotSolveExitsTwo) {
    test::TempDir dir;
    const std::string path = (dir / "twice.amq").string();
    test::WriteBytes(path, test::ExampleText("supernode.amq", "\"V2\"", "\"V1\""));
    const CliRun run = Cli({"check-equation", path, "--at", "V1", "V1 = 0"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "ampora-cli: " + path +
                           ": the circuit does not solve: Names must be unique.  You must rename "
                           "the duplicate ones.\n");
}

// Each text of "equations" is right at the name "equation_at" gives in the same place.
TEST(CliSolve, EachEquationIsRightAtTheNameBesideIt) {
    for (const auto& example : test::ExampleFiles()) {
        for (const std::string pattern : {"--autoname=1", "--autoname=3"}) {
            const std::string json = test::OneLine(Cli({"solve", pattern, example.string()}).out);
            std::smatch equations, anchors;
            ASSERT_TRUE(
                std::regex_search(json, equations, std::regex("\"equations\": \\[([^\\]]*)\\]")));
            ASSERT_TRUE(
                std::regex_search(json, anchors, std::regex("\"equation_at\": \\[([^\\]]*)\\]")));
            const std::regex quoted("\"([^\"]*)\"");
            const std::string equationList = equations[1];
            const std::string anchorList = anchors[1];
            std::vector<std::string> texts, names;
            for (std::sregex_iterator it(equationList.begin(), equationList.end(), quoted), end;
                 it != end; ++it) {
                texts.push_back((*it)[1]);
            }
            for (std::sregex_iterator it(anchorList.begin(), anchorList.end(), quoted), end;
                 it != end; ++it) {
                names.push_back((*it)[1]);
            }
            ASSERT_EQ(texts.size(), names.size()) << example;
            for (std::size_t k = 0; k < texts.size(); ++k) {
                const CliRun run =
                    Cli({"check-equation", pattern, example.string(), "--at", names[k], texts[k]});
                EXPECT_EQ(run.code, 0)
                    << example << " " << names[k] << ": " << texts[k] << run.out << run.err;
            }
        }
    }
}

TEST(CliGrade, EachLineItsVerdictThenTheScore) {
    test::TempDir dir;
    const std::string answers = (dir / "answers.txt").string();
    test::WriteBytes(answers, "# supernode V1 first\r\n"
                              "V1: (V1-V2)/10 + V4/30 = 0\r\n"
                              "V2: (V2-V1)/10 + (V2-V3)/20 - V2/40 = 0\r\n"
                              "\r\n"
                              "V3: (V3-V2)/20 + (V3+5/50 = 0\r\n"
                              "V7: V7 = 0\r\n"
                              "V1 = 4.58\r\n"
                              "V2 = 2.7 V\r\n"
                              "V4 = 5.42\r\n"
                              "I1 = many\r\n"
                              "Vq = 1\r\n"
                              "V3 is 0.556\r\n");
    const CliRun run = Cli({"grade", "--autoname", Example("two_supernodes.amq"), answers});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out,
              "line 2: supernode V1: right\n"
              "line 3: node V2: wrong: one term has the wrong sign: the current through the 40 Ω "
              "resistor between V2 and 0\n"
              "line 5: supernode V3: cannot be read: at character 23: a closing parenthesis is "
              "missing\n"
              "line 6: V7: wrong: no node is named V7\n"
              "line 7: V1 = 4.58: right\n"
              "line 8: V2 = 2.7 V: wrong: not right to 3 significant figures\n"
              "line 9: V4 = 5.42: wrong: the size is right but the sign is wrong\n"
              "line 10: I1 = many: cannot be read: \"many\" is not a number\n"
              "line 11: Vq = 1: wrong: no node or battery current is named Vq\n"
              "line 12: cannot be read: write \"AT: EQUATION\" or \"NAME = VALUE\" on each line\n"
              "score: 2 of 10\n");
}

TEST(CliGrade, AllRightExitsZeroAndAMissingAnswersFileTwo) {
    test::TempDir dir;
    const std::string answers = (dir / "answers.txt").string();
    test::WriteBytes(answers, "V1: -2 + V1/4 + V2/12 + V2/6 = 0\nV1 = 1\nV2 = 7\n");
    const CliRun run = Cli({"grade", "--autoname", Example("supernode.amq"), answers});
    EXPECT_EQ(run.code, 0) << run.out;
    EXPECT_EQ(run.out.substr(run.out.rfind("score")), "score: 3 of 3\n");
    const CliRun missing = Cli({"grade", Example("supernode.amq"), "/nonexistent/a.txt"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.err, "ampora-cli: /nonexistent/a.txt: no such file\n");
}

} // namespace
} // namespace ampora
