// The examples, and variants of them, solved as a student does and compared whole with the
// hand-checked files under tests/data/examples/: what the analysis found, the names, the texts
// and equations the student reads, the matrix and its elimination, the labels of every view
// and the sentences that describe the diagram.

#include "analysis/diagram_descriptions.h"
#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "equations/matrix_export.h"
#include "equations/row_operation_steps.h"
#include "support/solve_session.h"
#include "support/test_files.h"
#include "support/topology_dump.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <sstream>

namespace ampora {
namespace {

// Line ends that belong to the text are shown, so that a lost one shows too.
std::string Shown(std::string text) {
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; at += 5) {
        text.replace(at, 2, "\\r\\n\n");
    }
    return text;
}

std::string Steps(const ShownSteps& shown, int n) {
    std::string text;
    for (const ShownStep& step : shown.steps) {
        text += step.words.Joined() + "  [changed " + std::to_string(step.changedRow) + " " +
                std::to_string(step.otherChangedRow) + ", pivot " + std::to_string(step.pivotRow) +
                "," + std::to_string(step.pivotColumn) + "]\n";
        for (std::size_t k = 0; k < step.cells.size(); ++k) {
            text +=
                " " + step.cells[k] + ((k + 1) % static_cast<std::size_t>(n + 1) == 0 ? "\n" : "");
        }
    }
    for (const std::string& solution : shown.solutions) {
        text += solution + "\n";
    }
    return text;
}

// Each device's label in the four views, then the status bar's power totals.
std::string Labels(Workspace& ws) {
    std::vector<std::string> views[4];
    for (int view = 0; view < 4; ++view) {
        ws.ViewMode = static_cast<std::int16_t>(view);
        views[view] = WriteLabels(ws, 3);
    }
    std::string table;
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        table += std::to_string(slot);
        for (const auto& labels : views) {
            table += " | " + labels[static_cast<std::size_t>(slot)];
        }
        table += "\n";
    }
    return table + "status:" + ResultsStatusText(ws, 3) + "\n";
}

// `shown` holds the value labels as drawn, by slot.
std::string Descriptions(const Workspace& ws, const std::vector<std::string>& shown = {}) {
    std::string out;
    for (int slot = 1; slot <= ws.Circuit.NumWires; ++slot) {
        out += DescribeWire(ws.Circuit, slot, shown) + "\n";
    }
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        const auto at = static_cast<std::size_t>(slot);
        out += DescribeDevice(ws, slot, at < shown.size() ? shown[at] : "", 3) + "\n";
    }
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        out += DescribeNode(ws, slot, 3) + "\n";
    }
    return out;
}

std::string Dump(test::SolveSession& session) {
    Workspace& ws = session.ws;
    if (!session.solved) {
        return "refused: " + (session.prompts.messages.empty() ? "" : session.prompts.messages[0]);
    }
    const Equations& eq = ws.Equations;
    const int n = eq.NumUnknowns;
    std::string text = "== nodes: name, voltage, label\n";
    const std::vector<std::string> nodeLabels = NodeLabelTexts(ws, kViewVoltages, 3);
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.Circuit.NodeLabels[slot];
        text += node.Name + " | " + FormatNumber(node.Voltage, 8) + " | " +
                nodeLabels[static_cast<std::size_t>(slot)] + "\n";
    }
    for (int s = 1; s <= eq.NumSuperNodes; ++s) {
        text += "supernode";
        for (const auto position : eq.SuperNodes[s].Nodes) {
            text += " " + ws.Circuit.NodeLabels[ws.Naming.NodeOrder[position]].Name;
        }
        text += "\n";
    }
    text += "== topology\n" + test::DumpTopology(ws.Circuit, ws.Topology);
    text += "== counting\n" + Shown(eq.CountingText);
    text += "== captions\n";
    for (const std::string& caption : eq.EqnText) {
        text += caption + "|\n";
    }
    text += "== equations\n";
    for (std::size_t v = 0; v < eq.EqnVars.size(); ++v) {
        text +=
            eq.EqnVars[v].VarName + ": " + eq.FirstWritten[v] + "\n    " + eq.Collected[v] + "\n";
    }
    // The .gj file holds the matrix to the last bit; the steps end at the reduced form.
    text += "== csv, gj\n" + Shown(MatrixCsvText(ws)) + Shown(GjText(eq.Augmented, n));
    text += "== steps\n" + Steps(ShowRowOperations(ws, false, 3), n);
    text += "== in fractions\n";
    for (const std::string& solution : ShowRowOperations(ws, true, 3).solutions) {
        text += solution + "\n";
    }
    text += "== labels: values, currents, voltages, powers\n" + Labels(ws);
    return text + "== descriptions\n" + Descriptions(ws);
}

// Each file of tests/data/examples/ but one names its example, whether AutoName runs, and the
// edits that make the variant (made wherever they match: a label holds its name twice).
TEST(SolvedExamples, EachExampleAndVariantSolvesAsWorkedByHand) {
    const auto Unescaped = [](const std::string& part) {
        return std::regex_replace(part, std::regex(R"(\\r\\n)"), "\r\n");
    };
    int solved = 0;
    for (const auto& entry : std::filesystem::directory_iterator(
             std::filesystem::path(AMPORA_SOURCE_DIR) / "tests/data/examples")) {
        const std::string name = entry.path().filename().string();
        std::istringstream lines(test::ReadBytes(entry.path()));
        std::string line;
        std::getline(lines, line);
        const auto amq = line.find(".amq, auto-named ");
        if (amq == std::string::npos) {
            continue; // the out-of-the-ordinary cases below
        }
        SCOPED_TRACE(name);
        std::string text = test::ExampleText(line.substr(2, amq + 2)), header = line + "\n";
        const int autoName = line.ends_with(" yes") ? 1 : 0;
        for (; std::getline(lines, line) && line.starts_with("# "); header += line + "\n") {
            if (const auto arrow = line.find(" =>"); line.starts_with("# edit ")) {
                text = std::regex_replace(text, std::regex(Unescaped(line.substr(7, arrow - 7))),
                                          Unescaped(line.substr(std::min(line.size(), arrow + 4))));
            }
        }
        test::SolveSession session;
        test::Solve(session, text, autoName);
        const std::string dump = header + Dump(session);
        EXPECT_EQ(dump, test::ExpectedText("examples/" + name, dump));
        ++solved;
    }
    EXPECT_EQ(solved, 17);
}

// A source whose chain is not known, a resistor and a battery whose currents are not known,
// and a resistor carrying exactly nothing; then, back in step 2, devices between nodes, and
// in step 1 devices at points with the labels as drawn. Worked by hand in
// tests/data/examples/out_of_the_ordinary.txt.
TEST(SolvedExamples, UnknownQuantitiesAndTheSentencesBackInStepsTwoAndOne) {
    test::SolveSession source;
    test::Solve(source, test::ExampleText("current_source.amq"), 0);
    ASSERT_TRUE(source.solved);
    Circuit& circuit = source.ws.Circuit;
    circuit.Elements[1].Branch = 0;
    circuit.Elements[2].Current = kUnknownCurrent;
    circuit.Elements[3].Current = 0;
    circuit.Elements[4].Current = kUnknownCurrent;
    std::string dump = "== labels with unknowns\n" + Labels(source.ws);

    test::SolveSession divider;
    test::Solve(divider, test::ExampleText("voltage_divider.amq"), 0);
    ASSERT_TRUE(divider.solved);
    Workspace& ws = divider.ws;
    BackToStep2(ws);
    ws.Circuit.NodeLabels[1].Name.clear();
    dump += "== step 2, a node unnamed\n" + Descriptions(ws);
    BackToStep1(ws);
    ws.Circuit.NumNodes = 0;
    dump += "== step 1\n" + Descriptions(ws, {"", "1k Ω", "12 V", "2000 Ω", "2e3 Ω"});
    EXPECT_EQ(dump, test::ExpectedText("examples/out_of_the_ordinary.txt", dump));
}

} // namespace
} // namespace ampora
