#include "cli/solve_run.h"

#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "tables/number_text.h"

#include <filesystem>

namespace ampora::cli {

bool OpenCircuit(Workspace& workspace, const RunOptions& options, std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(options.path, error)) {
        err << "ampora-cli: " << options.path << ": no such file\n";
        return false;
    }
    workspace.Preferences.SigFigs = options.sigFigs;
    workspace.Preferences.FontIndex = options.fontIndex;
    if (options.autoNamePattern) {
        workspace.Preferences.AutoNamePattern = *options.autoNamePattern;
    }
    EraseWholeCircuit(workspace.Circuit);
    const ReadResult read = LoadFromIniFile(workspace.Circuit, options.path);
    if (!read.complete) {
        // Grading half a circuit would give a wrong answer that looks right.
        err << "ampora-cli: " << options.path << ": " << read.reason << "\n";
        return false;
    }
    // As the window shows it: the full path of the open file.
    workspace.CurrentFileName = std::filesystem::absolute(options.path, error).string();
    return true;
}

std::optional<SolvedRun> OpenAndSolve(Workspace& workspace, const RunOptions& options,
                                      RecordedPrompts& prompts, std::ostream& err) {
    if (!OpenCircuit(workspace, options, err)) {
        return std::nullopt;
    }

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

bool OpenAndSolveWhole(Workspace& workspace, const RunOptions& options, std::ostream& err) {
    RecordedPrompts prompts;
    const std::optional<SolvedRun> run = OpenAndSolve(workspace, options, prompts, err);
    if (run && !run->solved) {
        err << "ampora-cli: " << options.path << ": the circuit does not solve: " << prompts.message
            << "\n";
    }
    return run && run->solved;
}

} // namespace ampora::cli
