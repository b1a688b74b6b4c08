#include "cli/cli.h"
#include "cli/json_writer.h"
#include "cli/solve_run.h"
#include "equations/equation_check.h"

namespace ampora::cli {

int RunCheckEquation(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArguments parsed = ParseArguments(args, Command::CheckEquation);
    if (!parsed.Valid()) {
        return ReportArgumentError(err, parsed.error, Command::CheckEquation);
    }
    const RunOptions& options = parsed.options;
    Workspace workspace;
    if (!OpenAndSolveWhole(workspace, options, err)) {
        return kExitUsage;
    }
    const int variable = EquationAtNode(workspace, options.at);
    if (variable == 0) {
        err << "ampora-cli: --at " << options.at << ": " << WhyNoEquationAt(workspace, options.at)
            << "\n";
        return kExitUsage;
    }
    const EquationVerdict verdict = CheckEquation(workspace, variable, options.equation);
    if (!verdict.error.empty()) {
        err << "ampora-cli: the equation cannot be read: " << verdict.error << "\n";
        return kExitUsage;
    }
    JsonWriter json;
    json.BeginObject();
    json.Member("at", EquationCaption(workspace, variable));
    json.Member("equation", options.equation);
    json.Key("equivalent");
    json.Bool(verdict.equivalent);
    json.Key("equation_of");
    if (verdict.equationOf.empty()) {
        json.Null();
    } else {
        json.String(verdict.equationOf);
    }
    json.Key("hint");
    if (verdict.hint.empty()) {
        json.Null();
    } else {
        json.String(verdict.hint);
    }
    json.EndObject();
    out << json.Text();
    return verdict.equivalent ? kExitOk : kExitRejected;
}

} // namespace ampora::cli
