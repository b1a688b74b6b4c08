#include "support/cli_run.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <regex>

namespace ampora {
namespace {

using test::Cli;
using test::CliRun;
using Matrix = std::vector<std::vector<double>>;

std::string Example(const char* name) {
    return (test::ExamplesDir() / name).string();
}

// The rows of numbers of the first "key": [[...], ...] at or after `from` in one-line JSON.
Matrix NumbersAfter(const std::string& json, const std::string& key, std::size_t from = 0) {
    std::size_t at = json.find("\"" + key + "\": [", from);
    Matrix rows;
    if (at == std::string::npos) {
        return rows;
    }
    at = json.find('[', at) + 1;
    while (json[at] == '[' || json[at] == ',') {
        at += json[at] == ',' ? 1 : 0;
        rows.emplace_back();
        const char* p = json.c_str() + at + 1;
        while (*p != ']') {
            char* end = nullptr;
            rows.back().push_back(std::strtod(p, &end));
            p = end + (*end == ',' ? 1 : 0);
        }
        at = static_cast<std::size_t>(p - json.c_str()) + 1;
    }
    return rows;
}

bool Near(const Matrix& a, const Matrix& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t k = 0; k < a[i].size(); ++k) {
            if (a[i].size() != b[i].size() || std::fabs(a[i][k] - b[i][k]) > 1e-9) {
                return false;
            }
        }
    }
    return true;
}

// Every operation of the list, done as its words say, gives its matrix, and the last is the
// reduced form.
TEST(CliSolveRowOperations, ReplayingTheListFromTheMatrixEndsAtTheReducedForm) {
    for (const char* name : {"two_supernodes.amq", "wheatstone_bridge.amq", "supernode.amq"}) {
        SCOPED_TRACE(name);
        const CliRun run = Cli({"solve", Example(name)});
        ASSERT_EQ(run.code, 0);
        const std::string json = test::OneLine(run.out);
        Matrix matrix = NumbersAfter(json, "matrix");
        const std::regex step(
            R"re(\{"op": "(\w+)","row": (\d+),"source": (\d+),"factor": ([-0-9.eE+]+),)re");
        int steps = 0;
        for (auto it = std::sregex_iterator(json.begin(), json.end(), step);
             it != std::sregex_iterator(); ++it, ++steps) {
            const std::smatch& m = *it;
            const std::size_t row = std::stoul(m[2]) - 1, source = std::stoul(m[3]) - 1;
            const double factor = std::stod(m[4]);
            for (std::size_t k = 0; k < matrix[row].size(); ++k) {
                if (m[1] == "swap") {
                    std::swap(matrix[row][k], matrix[source][k]);
                } else if (m[1] == "scale") {
                    matrix[row][k] *= factor;
                } else {
                    matrix[row][k] += factor * matrix[source][k];
                }
            }
            const Matrix shown =
                NumbersAfter(json, "matrix", static_cast<std::size_t>(m.position(0)));
            ASSERT_TRUE(Near(matrix, shown)) << m.str();
        }
        EXPECT_GE(steps, 1);
        EXPECT_TRUE(Near(matrix, NumbersAfter(json, "rref")));
        EXPECT_EQ(json.find("_exact"), std::string::npos);
    }
}

TEST(CliSolveRowOperations, ExactFractionsAndTheMatrixFileOfTheBridge) {
    test::TempDir dir;
    const std::string gj = (dir / "bridge.gj").string();
    const CliRun run = Cli({"solve", "--exact", "--gj", gj, Example("wheatstone_bridge.amq")});
    ASSERT_EQ(run.code, 0);
    const std::string json = test::OneLine(run.out);
    const std::regex step(
        R"re("op": "(\w+)","row": (\d+),"source": (\d+),.*?"factor_exact": "([^"]+)")re");
    std::string steps;
    for (auto it = std::sregex_iterator(json.begin(), json.end(), step);
         it != std::sregex_iterator(); ++it) {
        steps += (*it)[1].str() + " " + (*it)[2].str() + " " + (*it)[3].str() + " " +
                 (*it)[4].str() + "\n";
    }
    EXPECT_EQ(steps, "scale 1 1 200/7\n"
                     "add 2 1 1/50\n"
                     "scale 2 2 5250/101\n"
                     "add 1 2 4/7\n");
    EXPECT_NE(json.find("\"matrix_exact\": [[\"1\",\"0\",\"660/101\"],[\"0\",\"1\",\"650/101\"]]}"),
              std::string::npos);
    const std::size_t last = json.rfind(",\"matrix_exact\"");
    EXPECT_EQ(json.substr(last, json.find(": \"", last) - last),
              ",\"matrix_exact\": [[\"7/200\",\"-1/50\",\"1/10\"],[\"-1/50\",\"23/750\",\"1/15\"]],"
              "\"rref_exact\": [[\"1\",\"0\",\"660/101\"],[\"0\",\"1\",\"650/101\"]],"
              "\"counting\"");
    EXPECT_EQ(test::ReadBytes(gj), "2\r\n"
                                   "0.035,-0.02,0.1\r\n"
                                   "-0.02,3.066666666666667E-2,6.666666666666667E-2\r\n");
}

TEST(CliSolveRowOperations, AMatrixFileThatCannotBeWrittenIsAnError) {
    test::TempDir dir;
    const std::string gj = (dir / "missing" / "a.gj").string();
    const CliRun run = Cli({"solve", "--gj", gj, Example("wheatstone_bridge.amq")});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err.rfind("ampora-cli: " + gj + ": cannot be written: ", 0), 0u) << run.err;
}

} // namespace
} // namespace ampora
