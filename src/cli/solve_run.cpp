#include "cli/solve_run.h"

#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "document/number_text.h"

#include <filesystem>

namespace ampora::cli {

std::optional<RunOptions> ParseRunOptions(const std::vector<std::string>& args,
                                          bool reportOptions) {
    RunOptions options;
    bool havePath = false;
    for (std::size_t k = 0; k < args.size(); ++k) {
        const std::string& arg = args[k];
        const bool haveValue = k + 1 < args.size();
        if (arg == "--autoname") {
            options.autoNamePattern = 1;
        } else if (arg.rfind("--autoname=", 0) == 0) {
            const std::string pattern = arg.substr(11);
            if (pattern != "1" && pattern != "2" && pattern != "3") {
                return std::nullopt;
            }
            options.autoNamePattern = static_cast<std::int16_t>(pattern[0] - '0');
        } else if (arg == "--sigfigs") {
            const auto value = haveValue ? ParseInteger(args[k + 1]) : std::nullopt;
            if (!value || *value < 1 || *value > 17) {
                return std::nullopt;
            }
            options.sigFigs = static_cast<std::int16_t>(*value);
            ++k;
        } else if (reportOptions && arg == "--font") {
            const auto value = haveValue ? ParseInteger(args[k + 1]) : std::nullopt;
            if (!value || *value < 1 || *value > 4) {
                return std::nullopt;
            }
            options.fontIndex = static_cast<std::int16_t>(*value);
            ++k;
        } else if (reportOptions && arg == "-o") {
            if (!haveValue || args[k + 1].empty()) {
                return std::nullopt;
            }
            options.output = args[k + 1];
            ++k;
        } else if (!arg.empty() && arg.front() != '-' && !havePath) {
            options.path = arg;
            havePath = true;
        } else {
            return std::nullopt;
        }
    }
    if (!havePath || (reportOptions && options.output.empty())) {
        return std::nullopt;
    }
    return options;
}

std::optional<SolvedRun> OpenAndSolve(Workspace& workspace, const RunOptions& options,
                                      RecordedPrompts& prompts, std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(options.path, error)) {
        err << "ampora-cli: " << options.path << ": no such file\n";
        return std::nullopt;
    }
    workspace.preferences.SigFigs = options.sigFigs;
    workspace.preferences.FontIndex = options.fontIndex;
    if (options.autoNamePattern) {
        workspace.preferences.AutoNamePattern = *options.autoNamePattern;
    }
    EraseWholeCircuit(workspace.circuit);
    const ReadResult read = LoadFromIniFile(workspace.circuit, options.path);
    if (!read.complete) {
        // Grading half a circuit would give a wrong answer that looks right.
        err << "ampora-cli: " << options.path << ": " << read.reason << "\n";
        return std::nullopt;
    }
    // As the window shows it: the full path of the open file.
    workspace.CurrentFileName = std::filesystem::absolute(options.path, error).string();

    SolvedRun run;
    run.leftStep1 = LeaveStep1(workspace, prompts);
    bool passed = run.leftStep1 == TransitionResult::Entered;
    if (passed && options.autoNamePattern) {
        passed = AutoName(workspace, prompts);
    }
    if (passed) {
        passed = LeaveStep2(workspace, prompts) == TransitionResult::Entered;
    }
    run.solved = passed;
    return run;
}

} // namespace ampora::cli
