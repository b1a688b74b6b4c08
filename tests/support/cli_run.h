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

inline CliRun Cli(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    const int code = cli::RunCli(args, out, err);
    return CliRun{code, out.str(), err.str()};
}

} // namespace ampora::test
