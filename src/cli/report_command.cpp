#include "cli/cli.h"
#include "cli/solve_run.h"
#include "report/html_writer.h"
#include "report/report_files.h"
#include "report/rtf_writer.h"

#include <filesystem>
#include <fstream>

namespace ampora::cli {

namespace {

bool WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return static_cast<bool>(file);
}

} // namespace

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
    bool written = false;
    switch (*format) {
    case ReportFileFormat::Html: {
        const std::string name = std::filesystem::path(options->path).filename().string();
        written = WriteFile(options->output, HtmlText(report, "DC Ampora - " + name));
        break;
    }
    case ReportFileFormat::Rtf:
        written = WriteFile(options->output, RtfText(report));
        break;
    case ReportFileFormat::Pdf:
        written = renderer->WritePdf(report, options->output);
        break;
    }
    if (!written) {
        err << "ampora-cli: " << options->output << ": cannot be written\n";
        return kExitUsage;
    }
    return kExitOk;
}

} // namespace ampora::cli
