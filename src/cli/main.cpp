#include "cli/cli.h"
#include "cli/cli_arguments.h"
#include "cli/practice_arguments.h"
#include "cli/report_helper.h"

#include <iostream>

int main(int argc, char* argv[]) {
    const std::vector<std::string> args(argv + 1, argv + argc);
#ifdef AMPORA_REPORT_HELPER
    // Reports, pictures and worksheets are drawn by a program of its own, which loads Qt;
    // wrong arguments are told here first, without starting it.
    const std::vector<std::string> rest(args.empty() ? args.begin() : args.begin() + 1, args.end());
    const bool drawn =
        !args.empty() &&
        ((args.front() == "report" &&
          ampora::cli::ParseArguments(rest, ampora::cli::Command::Report).Valid()) ||
         (args.front() == "picture" &&
          ampora::cli::ParseArguments(rest, ampora::cli::Command::Picture).Valid()) ||
         (args.front() == "worksheet" &&
          ampora::cli::ParsePracticeArguments(rest, ampora::cli::PracticeCommand::Worksheet)
              .Valid()));
    if (drawn) {
        return ampora::cli::ExecReportHelper(
            ampora::cli::ReportHelperCandidates(ampora::cli::RunningProgramFolder(argv[0]),
                                                AMPORA_REPORT_HELPER_FROM_BIN,
                                                AMPORA_REPORT_HELPER),
            args, std::cerr);
    }
#endif
    return ampora::cli::RunCli(args, std::cout, std::cerr);
}
