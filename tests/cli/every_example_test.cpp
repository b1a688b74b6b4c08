// What ampora-cli writes for every shipped example agrees with itself: each equation it shows
// is right at the name beside it, and its row operations, done as their words say, lead from
// the matrix to the reduced form.

#include "support/cli_run.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <regex>

namespace ampora {
namespace {

using Matrix = std::vector<std::vector<double>>;

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
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return std::equal(x.begin(), x.end(), y.begin(), y.end(),
                          [](double p, double q) { return std::fabs(p - q) <= 1e-9; });
    });
}

// The quoted texts of the list "key": [...] in one-line JSON.
std::vector<std::string> Texts(const std::string& json, const std::string& key) {
    std::smatch list;
    std::vector<std::string> texts;
    if (!std::regex_search(json, list, std::regex("\"" + key + "\": \\[([^\\]]*)\\]"))) {
        return texts;
    }
    const std::string inside = list[1];
    const std::regex quoted("\"([^\"]*)\"");
    for (std::sregex_iterator it(inside.begin(), inside.end(), quoted), end; it != end; ++it) {
        texts.push_back((*it)[1]);
    }
    return texts;
}

TEST(CliEveryExample, EachEquationIsRightAtItsNameAndTheRowOperationsReachTheReducedForm) {
    for (const auto& example : test::ExampleFiles()) {
        SCOPED_TRACE(example.filename().string());
        EXPECT_EQ(test::Cli({"check", example.string()}).code, 0);
        for (const std::string pattern : {"--autoname=1", "--autoname=3"}) {
            const test::CliRun run = test::Cli({"solve", pattern, example.string()});
            ASSERT_EQ(run.code, 0) << run.err;
            const std::string json = test::OneLine(run.out);
            const std::vector<std::string> equations = Texts(json, "equations");
            const std::vector<std::string> names = Texts(json, "equation_at");
            ASSERT_EQ(equations.size(), names.size());
            for (std::size_t k = 0; k < equations.size(); ++k) {
                const test::CliRun check = test::Cli(
                    {"check-equation", pattern, example.string(), "--at", names[k], equations[k]});
                EXPECT_EQ(check.code, 0) << names[k] << ": " << equations[k] << check.out;
            }
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
                ASSERT_TRUE(Near(
                    matrix, NumbersAfter(json, "matrix", static_cast<std::size_t>(m.position(0)))))
                    << m.str();
            }
            EXPECT_EQ(steps > 0, !matrix.empty());
            EXPECT_TRUE(Near(matrix, NumbersAfter(json, "rref")));
            EXPECT_EQ(json.find("_exact"), std::string::npos); // only with --exact
        }
    }
}

} // namespace
} // namespace ampora
