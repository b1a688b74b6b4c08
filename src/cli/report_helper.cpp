#include "cli/report_helper.h"

#include "cli/cli.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace ampora::cli {

std::vector<std::filesystem::path> ReportHelperCandidates(const std::filesystem::path& cliFolder,
                                                          const std::string& fromBin,
                                                          const std::string& name) {
    return {(cliFolder / fromBin / name).lexically_normal(), cliFolder / name};
}

std::filesystem::path RunningProgramFolder(const char* argv0) {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        return self.parent_path();
    }
    return std::filesystem::absolute(argv0 != nullptr ? argv0 : "", error).parent_path();
}

int ExecReportHelper(const std::vector<std::filesystem::path>& candidates,
                     const std::vector<std::string>& args, std::ostream& err) {
    for (const std::filesystem::path& helper : candidates) {
        if (::access(helper.c_str(), X_OK) != 0) {
            continue;
        }
        const std::string program = helper.string();
        std::vector<char*> argv{const_cast<char*>(program.c_str())};
        for (const std::string& arg : args) {
            argv.push_back(const_cast<char*>(arg.c_str()));
        }
        argv.push_back(nullptr);
        ::execv(program.c_str(), argv.data());
        err << "ampora-cli: " << program
            << ", which draws the report, cannot be run: " << std::strerror(errno) << "\n";
        return kExitUsage;
    }
    err << "ampora-cli: the program that draws the report is missing; it was looked for as";
    for (const std::filesystem::path& helper : candidates) {
        err << (helper == candidates.front() ? " " : " and ") << helper.string();
    }
    err << "\n";
    return kExitUsage;
}

} // namespace ampora::cli
