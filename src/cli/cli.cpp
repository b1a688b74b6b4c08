#include "cli/cli.h"

#include "cli/cli_arguments.h"

namespace ampora::cli {

int RunCli(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
           ReportRenderer* renderer) {
    if (args.empty()) {
        err << "ampora-cli: no command given\n" << Usage();
        return kExitUsage;
    }
    const std::string& command = args.front();
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    if (command == "check") {
        return RunCheck(rest, out, err);
    }
    if (command == "solve") {
        return RunSolve(rest, out, err);
    }
    if (command == "report") {
        return RunReport(rest, out, err, renderer);
    }
    if (command == "picture") {
        return RunPicture(rest, out, err, renderer);
    }
    if (command == "check-equation") {
        return RunCheckEquation(rest, out, err);
    }
    if (command == "grade") {
        return RunGrade(rest, out, err);
    }
    if (command == "generate") {
        return RunGenerate(rest, out, err);
    }
    if (command == "worksheet") {
        return RunWorksheet(rest, out, err, renderer);
    }
    err << "ampora-cli: " << command << ": no such command; the commands are check, solve, "
        << "report, picture, check-equation, grade, generate and worksheet\n"
        << Usage();
    return kExitUsage;
}

} // namespace ampora::cli
