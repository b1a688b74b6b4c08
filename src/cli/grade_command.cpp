#include "cli/cli.h"
#include "cli/solve_run.h"
#include "equations/equation_check.h"
#include "tables/number_text.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace ampora::cli {

namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

struct LineVerdict {
    std::string subject; // "supernode V1", "V1 = 4.58"; empty for a line not understood
    bool right = false;
    std::string text; // "right", "wrong: ...", "cannot be read: ..."
};

LineVerdict JudgeEquation(const Workspace& ws, std::string_view at, std::string_view equation) {
    LineVerdict line{std::string(at), false, ""};
    const int variable = EquationAtNode(ws, at);
    if (variable == 0) {
        line.text = "wrong: " + WhyNoEquationAt(ws, at);
        return line;
    }
    line.subject = EquationCaption(ws, variable);
    const EquationVerdict verdict = CheckEquation(ws, variable, equation);
    line.right = verdict.equivalent;
    line.text = !verdict.error.empty() ? "cannot be read: " + verdict.error
                : verdict.equivalent   ? "right"
                                       : "wrong: " + verdict.hint;
    return line;
}

LineVerdict JudgeValue(const Workspace& ws, std::string_view name, std::string_view written,
                       int sigFigs) {
    LineVerdict line{std::string(name) + " = " + std::string(written), false, ""};
    // A unit after the number is allowed: "4.58 V", "0.2 A".
    std::string_view number = written;
    if (number.ends_with('V') || number.ends_with('A')) {
        number = Trimmed(number.substr(0, number.size() - 1));
    }
    const std::optional<double> value = ParseDouble(number);
    if (!value) {
        line.text = "cannot be read: \"" + std::string(written) + "\" is not a number";
        return line;
    }
    const AnswerVerdict verdict = CheckAnswer(ws, name, *value, sigFigs);
    line.right = verdict.right;
    line.text = !verdict.known  ? "wrong: no node or battery current is named " + std::string(name)
                : verdict.right ? "right"
                                : "wrong: " + verdict.hint;
    return line;
}

LineVerdict JudgeLine(const Workspace& ws, std::string_view text, int sigFigs) {
    const std::size_t colon = text.find(':');
    const std::size_t equals = text.find('=');
    if (colon != std::string_view::npos && (equals == std::string_view::npos || colon < equals)) {
        return JudgeEquation(ws, Trimmed(text.substr(0, colon)), Trimmed(text.substr(colon + 1)));
    }
    if (equals != std::string_view::npos) {
        return JudgeValue(ws, Trimmed(text.substr(0, equals)), Trimmed(text.substr(equals + 1)),
                          sigFigs);
    }
    return LineVerdict{"", false,
                       "cannot be read: write \"AT: EQUATION\" or \"NAME = VALUE\" on each line"};
}

} // namespace

int RunGrade(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArguments parsed = ParseArguments(args, Command::Grade);
    if (!parsed.Valid()) {
        return ReportArgumentError(err, parsed.error, Command::Grade);
    }
    const RunOptions& options = parsed.options;
    std::error_code error;
    if (!std::filesystem::is_regular_file(options.answers, error)) {
        err << "ampora-cli: " << options.answers << ": no such file\n";
        return kExitUsage;
    }
    std::ifstream file(options.answers, std::ios::binary);
    std::ostringstream answers;
    answers << file.rdbuf();
    if (!file) {
        err << "ampora-cli: " << options.answers << ": cannot be read\n";
        return kExitUsage;
    }
    Workspace workspace;
    if (!OpenAndSolveWhole(workspace, options, err)) {
        return kExitUsage;
    }
    int judged = 0;
    int right = 0;
    std::istringstream lines(answers.str());
    std::string text;
    for (int number = 1; std::getline(lines, text); ++number) {
        const std::string_view line = Trimmed(text);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const LineVerdict verdict = JudgeLine(workspace, line, options.sigFigs);
        ++judged;
        right += verdict.right ? 1 : 0;
        out << "line " << number << ": " << (verdict.subject.empty() ? "" : verdict.subject + ": ")
            << verdict.text << "\n";
    }
    out << "score: " << right << " of " << judged << "\n";
    return judged > 0 && right == judged ? kExitOk : kExitRejected;
}

} // namespace ampora::cli
