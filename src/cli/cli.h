#pragma once
// ampora-cli: the batch companion of the program. Commands write their JSON or file
// to `out`, messages to `err`, and return the process exit code.

#include <ostream>
#include <string>
#include <vector>

namespace ampora::cli {

constexpr int kExitOk = 0;
constexpr int kExitRejected = 1;
constexpr int kExitUsage = 2;

int RunCli(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

int RunCheck(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

int RunSolve(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace ampora::cli
