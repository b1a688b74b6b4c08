#pragma once
// `ampora-cli report` draws its pictures and PDF pages with the window's Qt code, which check
// and solve must not load. So ampora-cli stays free of Qt and hands a report to a separate
// program that links that code: installed under libexec, in the build folder beside
// ampora-cli.

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace ampora::cli {

// Where the drawing program `name` may be, in the order tried: the installed layout,
// `fromBin` (such as "../libexec/ampora") relative to ampora-cli's folder, then ampora-cli's
// own folder, as in the build folder.
std::vector<std::filesystem::path> ReportHelperCandidates(const std::filesystem::path& cliFolder,
                                                          const std::string& fromBin,
                                                          const std::string& name);

// The folder of the running program, read from /proc; `argv0` when that cannot be read.
std::filesystem::path RunningProgramFolder(const char* argv0);

// Replaces this process with the first candidate that exists, giving it `args` (from the
// command's name on). Returns only when none can be run, after a message on `err`, with the
// exit code to end with.
int ExecReportHelper(const std::vector<std::filesystem::path>& candidates,
                     const std::vector<std::string>& args, std::ostream& err);

} // namespace ampora::cli
