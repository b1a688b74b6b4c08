#include "cli/solve_text.h"

#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "equations/supernode_queries.h"
#include "report/utf8_text.h"
#include "tables/number_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace ampora::cli {

namespace {

constexpr std::string_view kRightArrow = " \u2192";

// Columns as wide as their widest cell, two blanks apart, on lines indented by two. Widths
// count characters, not bytes: arrows and the ohm sign take one column on a terminal.
class TextTable {
  public:
    explicit TextTable(std::vector<bool> rightAligned = {})
        : rightAligned_(std::move(rightAligned)) {}

    void Row(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    std::string Text() const {
        std::vector<std::size_t> widths;
        for (const auto& row : rows_) {
            widths.resize(std::max(widths.size(), row.size()));
            for (std::size_t c = 0; c < row.size(); ++c) {
                widths[c] = std::max(widths[c], CharacterCount(row[c]));
            }
        }
        std::string text;
        for (const auto& row : rows_) {
            std::string line = "  ";
            for (std::size_t c = 0; c < row.size(); ++c) {
                const std::string padding(widths[c] - CharacterCount(row[c]), ' ');
                const bool right = c < rightAligned_.size() && rightAligned_[c];
                line += right ? padding + row[c] : row[c] + padding;
                line += c + 1 < row.size() ? "  " : "";
            }
            line.erase(line.find_last_not_of(' ') + 1);
            text += line + "\n";
        }
        return text;
    }

  private:
    std::vector<bool> rightAligned_;
    std::vector<std::vector<std::string>> rows_;
};

// A diagram label with its unit: "↑ 2" gives "↑ 2 A", "1.75 →" gives "1.75 A →". A quantity
// the analysis left unknown stays "?", and a zero needs no unit to be read.
std::string WithUnit(const std::string& label, std::string_view unit) {
    if (label == "?" || label == "0") {
        return label;
    }
    const bool arrowAfter =
        label.size() >= kRightArrow.size() &&
        label.compare(label.size() - kRightArrow.size(), kRightArrow.size(), kRightArrow) == 0;
    if (arrowAfter) {
        const std::string number = label.substr(0, label.size() - kRightArrow.size());
        return number + " " + std::string(unit) + std::string(kRightArrow);
    }
    return label + " " + std::string(unit);
}

std::string KindName(int kind) {
    if (IsBattery(kind)) {
        return "battery";
    }
    return IsResistor(kind) ? "resistor" : "current source";
}

const std::string& NodeName(const Workspace& ws, int node) {
    return ws.Circuit.NodeLabels[node].Name;
}

std::string Section(std::string_view title, const std::string& body) {
    return "\n" + std::string(title) + "\n" + body;
}

// Numbers padded on the left to one width, so that their last digits line up.
std::vector<std::string> RightAligned(const std::vector<std::string>& numbers) {
    std::size_t width = 0;
    for (const std::string& number : numbers) {
        width = std::max(width, number.size());
    }
    std::vector<std::string> cells;
    for (const std::string& number : numbers) {
        cells.push_back(std::string(width - number.size(), ' ') + number);
    }
    return cells;
}

std::string NodeVoltages(const Workspace& ws, int sigFigs) {
    std::vector<std::string> voltages;
    for (int node = 1; node <= ws.Circuit.NumNodes; ++node) {
        voltages.push_back(FormatNumber(ws.Circuit.NodeLabels[node].Voltage, sigFigs));
    }
    const std::vector<std::string> cells = RightAligned(voltages);
    TextTable table;
    for (int node = 1; node <= ws.Circuit.NumNodes; ++node) {
        table.Row({NodeName(ws, node), cells[static_cast<std::size_t>(node - 1)] + " V"});
    }
    return table.Text();
}

std::string Devices(Workspace& ws, int sigFigs) {
    std::array<std::vector<std::string>, 4> labels;
    for (int view = kViewValues; view <= kViewPower; ++view) {
        ws.ViewMode = static_cast<std::int16_t>(view);
        labels[static_cast<std::size_t>(view)] = WriteLabels(ws, sigFigs);
    }
    ws.ViewMode = kViewValues;
    TextTable table;
    table.Row({"device", "value", "at", "between", "current", "voltage", "power"});
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        const Element& element = ws.Circuit.Elements[slot];
        if (element.Kind == kEmpty) {
            continue;
        }
        const auto label = [&](int view) {
            return labels[static_cast<std::size_t>(view)][static_cast<std::size_t>(slot)];
        };
        const int chain = ws.Topology.Placements.at(static_cast<std::size_t>(slot)).chain;
        std::string between;
        if (chain != 0) {
            const Branch& branch = ws.Topology.Branches[chain];
            between = NodeName(ws, branch.StartNode) + ", " + NodeName(ws, branch.EndNode);
        }
        table.Row({KindName(element.Kind), label(kViewValues),
                   ShortestText(element.X) + ", " + ShortestText(element.Y), between,
                   WithUnit(label(kViewCurrents), "A"), WithUnit(label(kViewVoltages), "V"),
                   WithUnit(label(kViewPower), "W")});
    }
    return table.Text() +
           "  Arrows point as on the diagram: a current the way it flows, a voltage towards the\n"
           "  higher potential. A source's power is what it delivers, a resistor's what it\n"
           "  absorbs.\n";
}

std::string PowerTotals(const Workspace& ws, int sigFigs) {
    const std::vector<std::string> cells =
        RightAligned({FormatNumber(ws.PowerIn, sigFigs), FormatNumber(ws.PowerOut, sigFigs)});
    TextTable table;
    table.Row({"delivered by the sources", cells[0] + " W"});
    table.Row({"absorbed by the resistors", cells[1] + " W"});
    return table.Text();
}

std::string VariableName(const EqnVar& var) {
    return (var.SuperNode != 0 ? "supernode " : "node ") + var.VarName;
}

std::string EquationLines(const Workspace& ws) {
    const Equations& eq = ws.Equations;
    TextTable table;
    for (const BatteryConstraint& constraint : eq.Constraints) {
        table.Row({"through batteries", constraint.Text});
    }
    for (std::size_t v = 0; v < eq.EqnVars.size(); ++v) {
        table.Row({"KCL at " + VariableName(eq.EqnVars[v]),
                   v < eq.FirstWritten.size() ? eq.FirstWritten[v] : ""});
        table.Row({"collected", v < eq.Collected.size() ? eq.Collected[v] : ""});
    }
    return table.Text();
}

// The rows of a matrix with the unknowns over their columns and the constants after a bar.
std::string MatrixLines(const Workspace& ws, const AugmentedMatrix& matrix, int sigFigs) {
    const int n = ws.Equations.NumUnknowns;
    std::vector<bool> right(static_cast<std::size_t>(n) + 2, true);
    TextTable table(right);
    std::vector<std::string> heading;
    for (const EqnVar& var : ws.Equations.EqnVars) {
        heading.push_back(var.VarName);
    }
    heading.insert(heading.end(), {"", ""});
    table.Row(heading);
    for (int row = 1; row <= n; ++row) {
        std::vector<std::string> cells;
        for (int column = 1; column <= n; ++column) {
            cells.push_back(FormatNumber(matrix(row, column), sigFigs));
        }
        cells.push_back("|");
        cells.push_back(FormatNumber(matrix(row, n + 1), sigFigs));
        table.Row(cells);
    }
    return table.Text();
}

std::string Solutions(const Workspace& ws, int sigFigs) {
    std::vector<std::string> names, values, units, notes;
    for (const EqnVar& var : ws.Equations.EqnVars) {
        names.push_back(var.VarName);
        values.push_back(
            FormatNumber(ws.Circuit.NodeLabels[NodeAt(ws, var.Node)].Voltage, sigFigs));
        units.push_back("V");
        notes.push_back("");
    }
    // The current of each chain of batteries only, named once (its twin carries "-I").
    const Topology& topology = ws.Topology;
    for (int chain = 1; chain <= topology.NumBranches; ++chain) {
        const Branch& branch = topology.Branches[chain];
        if (branch.CurrentName.empty() || branch.CurrentName.front() != 'I') {
            continue;
        }
        names.push_back(branch.CurrentName);
        values.push_back(branch.Current == kUnknownCurrent ? "?"
                                                           : FormatNumber(branch.Current, sigFigs));
        units.push_back("A");
        notes.push_back("from " + NodeName(ws, branch.StartNode) + " to " +
                        NodeName(ws, branch.EndNode) + " through batteries");
    }
    const std::vector<std::string> aligned = RightAligned(values);
    TextTable table;
    for (std::size_t k = 0; k < names.size(); ++k) {
        table.Row({names[k], "= " + aligned[k] + " " + units[k], notes[k]});
    }
    return table.Text();
}

} // namespace

std::string SolveText(Workspace& ws, const SolvedRun& run, const std::string& message,
                      const std::string& fileName) {
    std::string text = "Circuit: " + fileName + "\n";
    if (!run.solved) {
        text += "Not solved: stopped at step " + std::to_string(ws.Step);
        text += message.empty() ? std::string(".\n") : ": " + message + "\n";
        return text;
    }
    const int sigFigs = ws.Preferences.SigFigs;
    text += "Solved, numbers to " + std::to_string(sigFigs) + " significant figures.\n";
    text += Section("Node voltages", NodeVoltages(ws, sigFigs));
    text += Section("Devices", Devices(ws, sigFigs));
    text += Section("Power", PowerTotals(ws, sigFigs));
    if (ws.Equations.NumUnknowns == 0) {
        text += Section("Equations", "  There are no unknown node voltages and no equations.\n");
        return text;
    }
    text += Section("Equations", EquationLines(ws));
    text += Section("Augmented matrix", MatrixLines(ws, ws.Equations.Augmented, sigFigs));
    text += Section("Reduced row echelon form", MatrixLines(ws, ws.Equations.Reduced, sigFigs));
    text += Section("Solutions", Solutions(ws, sigFigs));
    return text;
}

} // namespace ampora::cli
