#pragma once
// Runs ampora-cli in the test process and keeps what it wrote.

#include "cli/cli.h"

#include <sstream>
#include <string>
#include <vector>

namespace ampora::test {

struct CliRun {
    int code;
    std::string out;
    std::string err;
};

// `renderer` draws the report's pictures and PDF; without one `report` cannot run.
inline CliRun Cli(const std::vector<std::string>& args, cli::ReportRenderer* renderer = nullptr) {
    std::ostringstream out, err;
    const int code = cli::RunCli(args, out, err, renderer);
    return CliRun{code, out.str(), err.str()};
}

} // namespace ampora::test
