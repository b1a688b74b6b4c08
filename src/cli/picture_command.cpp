#include "cli/cli.h"
#include "cli/solve_run.h"
#include "document/safe_file_write.h"

namespace ampora::cli {

int RunPicture(const std::vector<std::string>& args, std::ostream&, std::ostream& err,
               ReportRenderer* renderer) {
    const ParsedArguments parsed = ParseArguments(args, Command::Picture);
    if (!parsed.Valid()) {
        return ReportArgumentError(err, parsed.error, Command::Picture);
    }
    const RunOptions& options = parsed.options;
    if (renderer == nullptr) {
        err << "ampora-cli: this ampora-cli was built without the graphics the picture needs\n";
        return kExitUsage;
    }
    Workspace workspace;
    if (options.viewMode == kViewValues) {
        // The values are those of the drawing in step 1: nothing needs solving.
        if (!OpenCircuit(workspace, options, err)) {
            return kExitUsage;
        }
    } else {
        RecordedPrompts prompts;
        const std::optional<SolvedRun> run = OpenAndSolve(workspace, options, prompts, err);
        if (!run) {
            return kExitUsage;
        }
        if (!run->solved) {
            err << "ampora-cli: " << options.path << ": not solved, so there is no such view";
            err << (prompts.message.empty() ? std::string(".") : ": " + prompts.message) << "\n";
            return kExitRejected;
        }
        workspace.ViewMode = options.viewMode;
    }
    const std::string bytes = renderer->DrawingBytes(workspace, *DrawingFormatOf(options.output));
    if (bytes.empty()) {
        err << "ampora-cli: " << options.path << ": the drawing is empty, so there is no picture\n";
        return kExitRejected;
    }
    const FileWriteResult written = WriteFileSafely(options.output, bytes);
    if (!written.written) {
        err << "ampora-cli: " << options.output << ": cannot be written: " << written.reason
            << "\n";
        return kExitUsage;
    }
    return kExitOk;
}

} // namespace ampora::cli
