#include "analysis/branch_tracing.h"
#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "analysis/step_transitions.h"
#include "cli/cli.h"
#include "cli/json_writer.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "document/number_text.h"

#include <array>
#include <filesystem>
#include <optional>

namespace ampora::cli {

namespace {

constexpr const char* kSolveUsage =
    "usage: ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] FILE.amq\n";

// Stands in for the message boxes: keeps the text of the last message shown.
struct RecordedPrompts : Prompts {
    std::string message;
    void ShowMessage(const std::string& text, MessageIcon) override { message = text; }
    bool AskYesNo(const std::string&) override { return false; }
    std::string AskText(const std::string&, const std::string&, float, float) override {
        return "";
    }
};

struct SolveOptions {
    std::optional<std::int16_t> autoNamePattern;
    std::int16_t sigFigs = Preferences{}.SigFigs;
    std::string path;
};

std::optional<SolveOptions> ParseOptions(const std::vector<std::string>& args) {
    SolveOptions options;
    bool havePath = false;
    for (std::size_t k = 0; k < args.size(); ++k) {
        const std::string& arg = args[k];
        if (arg == "--autoname") {
            options.autoNamePattern = 1;
        } else if (arg.rfind("--autoname=", 0) == 0) {
            const std::string pattern = arg.substr(11);
            if (pattern != "1" && pattern != "2" && pattern != "3") {
                return std::nullopt;
            }
            options.autoNamePattern = static_cast<std::int16_t>(pattern[0] - '0');
        } else if (arg == "--sigfigs") {
            const auto value = k + 1 < args.size() ? ParseInteger(args[k + 1]) : std::nullopt;
            if (!value || *value < 1 || *value > 17) {
                return std::nullopt;
            }
            options.sigFigs = static_cast<std::int16_t>(*value);
            ++k;
        } else if (!arg.empty() && arg.front() != '-' && !havePath) {
            options.path = arg;
            havePath = true;
        } else {
            return std::nullopt;
        }
    }
    if (!havePath) {
        return std::nullopt;
    }
    return options;
}

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
        labels[static_cast<std::size_t>(view)] = WriteLabels(ws, ws.preferences.SigFigs);
    }
    ws.ViewMode = kViewValues;
    json.Key("elements");
    json.BeginArray();
    for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
        const Element& element = ws.circuit.Elements[slot];
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
    json.BeginArray();
    for (int row = 1; row <= n; ++row) {
        json.BeginArray();
        for (int column = 1; column <= n + 1; ++column) {
            json.Number(matrix(row, column));
        }
        json.EndArray();
    }
    json.EndArray();
}

void WriteResults(JsonWriter& json, Workspace& ws) {
    WriteElements(json, ws);
    ws.ViewMode = kViewPower;
    WriteLabels(ws, ws.preferences.SigFigs);
    ws.ViewMode = kViewValues;
    json.Member("power_in", ws.PowerIn);
    json.Member("power_out", ws.PowerOut);
    const Equations& eq = ws.equations;
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
            members.push_back(ws.circuit.NodeLabels[ws.naming.NodeOrder[position]].Name);
        }
        WriteStringArray(json, members);
    }
    json.EndArray();
    WriteStrings(json, "equations", eq.FirstWritten);
    WriteStrings(json, "collected", eq.Collected);
    WriteMatrix(json, "matrix", eq.Augmented, eq.NumUnknowns);
    WriteMatrix(json, "rref", eq.Reduced, eq.NumUnknowns);
    json.Member("counting", eq.CountingText);
    WriteStrings(json, "captions", std::vector<std::string>(eq.EqnText.begin(), eq.EqnText.end()));
}

} // namespace

int RunSolve(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const std::optional<SolveOptions> options = ParseOptions(args);
    if (!options) {
        err << kSolveUsage;
        return kExitUsage;
    }
    std::error_code error;
    if (!std::filesystem::is_regular_file(options->path, error)) {
        err << "ampora-cli: " << options->path << ": no such file\n";
        return kExitUsage;
    }
    Workspace workspace;
    workspace.preferences.SigFigs = options->sigFigs;
    if (options->autoNamePattern) {
        workspace.preferences.AutoNamePattern = *options->autoNamePattern;
    }
    EraseWholeCircuit(workspace.circuit);
    const ReadResult read = LoadFromIniFile(workspace.circuit, options->path);
    if (!read.complete) {
        // Grading half a circuit would give a wrong answer that looks right.
        err << "ampora-cli: " << options->path << ": " << read.reason << "\n";
        return kExitUsage;
    }

    RecordedPrompts prompts;
    const TransitionResult left = LeaveStep1(workspace, prompts);
    bool passed = left == TransitionResult::Entered;
    if (passed && options->autoNamePattern) {
        passed = AutoName(workspace, prompts);
    }
    if (passed) {
        passed = LeaveStep2(workspace, prompts) == TransitionResult::Entered;
    }

    JsonWriter json;
    json.BeginObject();
    json.Member("status", passed ? "solved" : "rejected");
    json.Member("step", static_cast<int>(workspace.Step));
    json.Member("message", prompts.message);
    if (left != TransitionResult::Stopped) {
        WriteNodes(json, workspace.circuit, passed);
        WriteBranches(json, workspace.topology);
    }
    if (passed) {
        WriteResults(json, workspace);
    }
    json.EndObject();
    out << json.Text();
    return passed ? kExitOk : kExitRejected;
}

} // namespace ampora::cli
