#include "analysis/branch_tracing.h"
#include "analysis/result_labels.h"
#include "cli/cli.h"
#include "cli/json_writer.h"
#include "cli/row_operations_json.h"
#include "cli/solve_run.h"
#include "cli/solve_text.h"
#include "document/safe_file_write.h"
#include "equations/equation_check.h"
#include "equations/matrix_export.h"
#include "tables/number_text.h"
#include "workflow/step_transitions.h"

#include <array>
#include <filesystem>
#include <optional>

namespace ampora::cli {

namespace {

void WriteKnown(JsonWriter& json, std::string_view key, double value) {
    json.Key(key);
    if (value == kUnknownCurrent) {
        json.Null();
    } else {
        json.Number(value);
    }
}

void WriteNodes(JsonWriter& json, const Circuit& circuit, bool solved) {
    json.Key("nodes");
    json.BeginArray();
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& node = circuit.NodeLabels[slot];
        json.BeginObject();
        json.Member("slot", slot);
        json.Member("name", node.Name);
        json.Member("x", node.X);
        json.Member("y", node.Y);
        json.Key("voltage");
        if (solved) {
            json.Number(node.Voltage);
        } else {
            json.Null();
        }
        json.EndObject();
    }
    json.EndArray();
}

void WriteBranches(JsonWriter& json, const Topology& topology) {
    json.Key("branches");
    json.BeginArray();
    const int chains = NumChains(topology);
    for (int slot = 1; slot <= chains; ++slot) {
        const Branch& chain = topology.Branches[slot];
        json.BeginObject();
        json.Member("slot", slot);
        json.Member("start", chain.StartNode);
        json.Member("end", chain.EndNode);
        json.Member("path", chain.Path);
        json.Member("resistance", chain.Resistance);
        json.Member("emf", chain.EMF);
        json.Member("source_current", chain.SourceCurrent);
        json.Member("current_name", chain.CurrentName);
        WriteKnown(json, "current", chain.Current);
        json.EndObject();
    }
    json.EndArray();
}

void WriteElements(JsonWriter& json, Workspace& ws) {
    std::array<std::vector<std::string>, 4> labels;
    for (int view = 0; view < 4; ++view) {
        ws.ViewMode = static_cast<std::int16_t>(view);
        labels[static_cast<std::size_t>(view)] = WriteLabels(ws, ws.Preferences.SigFigs);
    }
    ws.ViewMode = kViewValues;
    json.Key("elements");
    json.BeginArray();
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        const Element& element = ws.Circuit.Elements[slot];
        if (element.Kind == kEmpty) {
            continue;
        }
        json.BeginObject();
        json.Member("slot", slot);
        json.Member("kind", element.Kind);
        json.Member("value", element.Value);
        json.Member("x", element.X);
        json.Member("y", element.Y);
        json.Member("branch", element.Branch);
        WriteKnown(json, "current", element.Current);
        json.Key("labels");
        json.BeginObject();
        const char* keys[] = {"value", "current", "voltage", "power"};
        for (std::size_t view = 0; view < 4; ++view) {
            json.Member(keys[view], labels[view][static_cast<std::size_t>(slot)]);
        }
        json.EndObject();
        json.EndObject();
    }
    json.EndArray();
}

void WriteStringArray(JsonWriter& json, const std::vector<std::string>& texts) {
    json.BeginArray();
    for (const std::string& text : texts) {
        json.String(text);
    }
    json.EndArray();
}

void WriteStrings(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
    json.Key(key);
    WriteStringArray(json, texts);
}

void WriteMatrix(JsonWriter& json, std::string_view key, const AugmentedMatrix& matrix, int n) {
    json.Key(key);
    WriteMatrix(json, matrix, n);
}

void WriteResults(JsonWriter& json, Workspace& ws, bool exact) {
    WriteElements(json, ws);
    ws.ViewMode = kViewPower;
    WriteLabels(ws, ws.Preferences.SigFigs);
    ws.ViewMode = kViewValues;
    json.Member("power_in", ws.PowerIn);
    json.Member("power_out", ws.PowerOut);
    const Equations& eq = ws.Equations;
    std::vector<std::string> unknowns;
    for (const EqnVar& var : eq.EqnVars) {
        unknowns.push_back(var.VarName);
    }
    WriteStrings(json, "unknowns", unknowns);
    json.Key("supernodes");
    json.BeginArray();
    for (int s = 1; s <= eq.NumSuperNodes; ++s) {
        std::vector<std::string> members;
        for (const std::int16_t position : eq.SuperNodes[s].Nodes) {
            members.push_back(ws.Circuit.NodeLabels[ws.Naming.NodeOrder[position]].Name);
        }
        WriteStringArray(json, members);
    }
    json.EndArray();
    WriteStrings(json, "equations", eq.FirstWritten);
    WriteStrings(json, "equation_at", EquationAnchors(ws));
    WriteStrings(json, "collected", eq.Collected);
    WriteMatrix(json, "matrix", eq.Augmented, eq.NumUnknowns);
    WriteMatrix(json, "rref", eq.Reduced, eq.NumUnknowns);
    WriteRowOperations(json, ws, exact);
    json.Member("counting", eq.CountingText);
    WriteStrings(json, "captions", std::vector<std::string>(eq.EqnText.begin(), eq.EqnText.end()));
}

} // namespace

int RunSolve(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArguments parsed = ParseArguments(args, Command::Solve);
    if (!parsed.Valid()) {
        return ReportArgumentError(err, parsed.error, Command::Solve);
    }
    const RunOptions& options = parsed.options;
    Workspace workspace;
    RecordedPrompts prompts;
    const std::optional<SolvedRun> run = OpenAndSolve(workspace, options, prompts, err);
    if (!run) {
        return kExitUsage;
    }
    if (run->solved && !options.gjPath.empty()) {
        const Equations& eq = workspace.Equations;
        const FileWriteResult written =
            WriteFileSafely(options.gjPath, GjText(eq.Augmented, eq.NumUnknowns));
        if (!written.written) {
            err << "ampora-cli: " << options.gjPath << ": cannot be written: " << written.reason
                << "\n";
            return kExitUsage;
        }
    }
    if (options.text) {
        const std::string name = std::filesystem::path(options.path).filename().string();
        out << SolveText(workspace, *run, prompts.message, name);
        return run->solved ? kExitOk : kExitRejected;
    }
    const TransitionResult left = run->leftStep1;
    const bool passed = run->solved;

    JsonWriter json;
    json.BeginObject();
    json.Member("status", passed ? "solved" : "rejected");
    json.Member("step", static_cast<int>(workspace.Step));
    json.Member("message", prompts.message);
    if (left != TransitionResult::Stopped) {
        WriteNodes(json, workspace.Circuit, passed);
        WriteBranches(json, workspace.Topology);
    }
    if (left == TransitionResult::Entered) {
        std::vector<std::string> warnings;
        for (const DrawingWarning& warning : workspace.Topology.Warnings) {
            warnings.push_back(warning.text);
        }
        WriteStrings(json, "warnings", warnings);
    }
    if (passed) {
        WriteResults(json, workspace, options.exact);
    }
    json.EndObject();
    out << json.Text();
    return passed ? kExitOk : kExitRejected;
}

} // namespace ampora::cli
