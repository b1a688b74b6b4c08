#include "cli/cli.h"
#include "cli/cli_arguments.h"
#include "cli/report_helper.h"

#include <iostream>

int main(int argc, char* argv[]) {
    const std::vector<std::string> args(argv + 1, argv + argc);
#ifdef AMPORA_REPORT_HELPER
    // A report and a picture are drawn by a program of its own, which loads Qt; wrong arguments
    // are told here first, without starting it.
    const bool drawn = !args.empty() && (args.front() == "report" || args.front() == "picture");
    const auto command = drawn && args.front() == "picture" ? ampora::cli::Command::Picture
                                                            : ampora::cli::Command::Report;
    if (drawn && ampora::cli::ParseArguments({args.begin() + 1, args.end()}, command).Valid()) {
        return ampora::cli::ExecReportHelper(
            ampora::cli::ReportHelperCandidates(ampora::cli::RunningProgramFolder(argv[0]),
                                                AMPORA_REPORT_HELPER_FROM_BIN,
                                                AMPORA_REPORT_HELPER),
            args, std::cerr);
    }
#endif
    return ampora::cli::RunCli(args, std::cout, std::cerr);
}
