#include "cli/cli.h"

namespace ampora::cli {

namespace {

constexpr const char* kUsage =
    "usage: ampora-cli check FILE.amq\n"
    "       ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] FILE.amq\n"
    "       ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] [--font 1..4] FILE.amq\n"
    "                         -o OUT.(html|rtf|pdf)\n";

} // namespace

int RunCli(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
           ReportRenderer* renderer) {
    if (args.empty()) {
        err << kUsage;
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
    err << "ampora-cli: unknown command \"" << command << "\"\n" << kUsage;
    return kExitUsage;
}

} // namespace ampora::cli
