#include "cli/cli.h"
#include "cli/practice_arguments.h"
#include "document/amq_file.h"
#include "document/safe_file_write.h"
#include "practice/practice_circuit.h"
#include "practice/worksheet.h"
#include "report/html_writer.h"

#include <filesystem>
#include <random>

namespace ampora::cli {

namespace {

int ArgumentError(std::ostream& err, const std::string& error, PracticeCommand command) {
    err << "ampora-cli: " << error << "\n" << PracticeUsage(command);
    return kExitUsage;
}

// The seed given, or a fresh one, told on standard error so that the same can be made again.
std::uint32_t SeedToUse(const PracticeOptions& options, std::ostream& err) {
    if (options.seed) {
        return *options.seed;
    }
    const std::uint32_t seed = std::random_device{}();
    err << "ampora-cli: made with --seed " << seed << "\n";
    return seed;
}

bool WriteOrSay(const std::string& path, const std::string& bytes, std::ostream& err) {
    const FileWriteResult written = WriteFileSafely(path, bytes);
    if (!written.written) {
        err << "ampora-cli: " << path << ": cannot be written: " << written.reason << "\n";
    }
    return written.written;
}

// The sheet or the key as the bytes of its file, .pdf or .html; empty when the PDF could
// not be drawn.
std::string SheetBytes(const RichTextDocument& sheet, const std::string& path,
                       const std::string& title, ReportRenderer& renderer) {
    if (std::filesystem::path(path).extension() == ".html") {
        return HtmlText(sheet, title);
    }
    return renderer.PdfBytes(sheet);
}

} // namespace

int RunGenerate(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    const ParsedPracticeArguments parsed = ParsePracticeArguments(args, PracticeCommand::Generate);
    if (!parsed.Valid()) {
        return ArgumentError(err, parsed.error, PracticeCommand::Generate);
    }
    const PracticeOptions& options = parsed.options;
    const PracticeShape shape{*options.shape.Nodes, *options.shape.SuperNodes,
                              *options.shape.Sources};
    const std::string refusal = ShapeRefusal(shape);
    if (!refusal.empty()) {
        err << "ampora-cli: " << refusal << "\n";
        return kExitUsage;
    }
    const PracticeCircuit circuit =
        MakePracticeCircuit(shape, SeedToUse(options, err), options.nice);
    return WriteOrSay(options.output, CircuitFileText(circuit.drawn), err) ? kExitOk : kExitUsage;
}

int RunWorksheet(const std::vector<std::string>& args, std::ostream&, std::ostream& err,
                 ReportRenderer* renderer) {
    const ParsedPracticeArguments parsed = ParsePracticeArguments(args, PracticeCommand::Worksheet);
    if (!parsed.Valid()) {
        return ArgumentError(err, parsed.error, PracticeCommand::Worksheet);
    }
    const PracticeOptions& options = parsed.options;
    const std::string refusal = WorksheetShapeRefusal(options.shape);
    if (!refusal.empty()) {
        err << "ampora-cli: " << refusal << "\n";
        return kExitUsage;
    }
    if (renderer == nullptr) {
        err << "ampora-cli: this ampora-cli was built without the graphics the worksheet needs\n";
        return kExitUsage;
    }
    std::vector<Workspace> circuits =
        MakeWorksheetCircuits(options.count, options.shape, SeedToUse(options, err));
    RichTextDocument sheet, key;
    WriteWorksheet(circuits, sheet, renderer->Pictures());
    WriteAnswerKey(circuits, key, renderer->Pictures());
    const std::string sheetBytes = SheetBytes(sheet, options.output, kWorksheetTitle, *renderer);
    const std::string keyBytes = SheetBytes(key, options.key, kAnswerKeyTitle, *renderer);
    for (const auto& [path, bytes] :
         {std::pair{&options.output, &sheetBytes}, std::pair{&options.key, &keyBytes}}) {
        if (bytes->empty()) {
            err << "ampora-cli: " << *path << ": the PDF could not be drawn\n";
            return kExitUsage;
        }
    }
    return WriteOrSay(options.output, sheetBytes, err) && WriteOrSay(options.key, keyBytes, err)
               ? kExitOk
               : kExitUsage;
}

} // namespace ampora::cli
