#include "cli/cli.h"
#include "cli/cli_arguments.h"
#include "cli/json_writer.h"
#include "document/amq_file.h"

#include <filesystem>

namespace ampora::cli {

namespace {

void WriteCircuit(JsonWriter& json, const Circuit& circuit) {
    json.Key("wires");
    json.BeginArray();
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used == 0) {
            continue;
        }
        json.BeginObject();
        json.Member("slot", slot);
        json.Member("x1", w.X1);
        json.Member("y1", w.Y1);
        json.Member("x2", w.X2);
        json.Member("y2", w.Y2);
        json.EndObject();
    }
    json.EndArray();
    json.Key("elements");
    json.BeginArray();
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind == kEmpty) {
            continue;
        }
        json.BeginObject();
        json.Member("slot", slot);
        json.Member("kind", static_cast<int>(e.Kind));
        json.Member("value", e.Value);
        json.Member("x", e.X);
        json.Member("y", e.Y);
        json.EndObject();
    }
    json.EndArray();
    json.Key("nodes");
    json.BeginArray();
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& n = circuit.NodeLabels[slot];
        json.BeginObject();
        json.Member("slot", slot);
        json.Member("name", n.Name);
        json.Member("x", n.X);
        json.Member("y", n.Y);
        json.EndObject();
    }
    json.EndArray();
}

} // namespace

int RunCheck(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArguments parsed = ParseArguments(args, Command::Check);
    if (!parsed.Valid()) {
        return ReportArgumentError(err, parsed.error, Command::Check);
    }
    const std::string& path = parsed.options.path;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        err << "ampora-cli: " << path << ": no such file\n";
        return kExitUsage;
    }
    Circuit circuit;
    const ReadResult read = LoadFromIniFile(circuit, path);
    if (read.line == 0 && !read.complete) {
        err << "ampora-cli: " << path << ": " << read.reason << "\n";
        return kExitUsage;
    }
    JsonWriter json;
    json.BeginObject();
    json.Key("complete");
    json.Bool(read.complete);
    WriteCircuit(json, circuit);
    json.EndObject();
    out << json.Text();
    if (!read.complete) {
        err << "ampora-cli: " << path << ": reading stopped: " << read.reason << "\n";
        return kExitRejected;
    }
    return kExitOk;
}

} // namespace ampora::cli
