#include "cli/cli.h"
#include "cli/solve_run.h"
#include "document/safe_file_write.h"
#include "report/html_writer.h"
#include "report/report_files.h"
#include "report/rtf_writer.h"

#include <filesystem>

namespace ampora::cli {

int RunReport(const std::vector<std::string>& args, std::ostream&, std::ostream& err,
              ReportRenderer* renderer) {
    const ParsedArguments parsed = ParseArguments(args, Command::Report);
    if (!parsed.Valid()) {
        return ReportArgumentError(err, parsed.error, Command::Report);
    }
    const RunOptions* options = &parsed.options;
    const std::optional<ReportFileFormat> format = ReportFormatOf(options->output);
    if (renderer == nullptr) {
        err << "ampora-cli: this ampora-cli was built without the graphics the report needs\n";
        return kExitUsage;
    }
    Workspace workspace;
    RecordedPrompts prompts;
    const std::optional<SolvedRun> run = OpenAndSolve(workspace, *options, prompts, err);
    if (!run) {
        return kExitUsage;
    }
    if (!run->solved) {
        err << "ampora-cli: " << options->path << ": not solved, so there is no report";
        err << (prompts.message.empty() ? std::string(".") : ": " + prompts.message) << "\n";
        return kExitRejected;
    }

    RichTextDocument report;
    LoadRTBoxWithReport(workspace, report, renderer->Pictures());
    std::string bytes;
    switch (*format) {
    case ReportFileFormat::Html: {
        const std::string name = std::filesystem::path(options->path).filename().string();
        bytes = HtmlText(report, "DC Ampora - " + name);
        break;
    }
    case ReportFileFormat::Rtf:
        bytes = RtfText(report);
        break;
    case ReportFileFormat::Pdf:
        bytes = renderer->PdfBytes(report);
        if (bytes.empty()) {
            err << "ampora-cli: " << options->output << ": the PDF could not be drawn\n";
            return kExitUsage;
        }
        break;
    }
    // Written beside the old file and moved over it only when whole: a failure leaves the
    // old file as it was.
    const FileWriteResult written = WriteFileSafely(options->output, bytes);
    if (!written.written) {
        err << "ampora-cli: " << options->output << ": cannot be written: " << written.reason
            << "\n";
        return kExitUsage;
    }
    return kExitOk;
}

} // namespace ampora::cli
