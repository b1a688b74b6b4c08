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

#include <regex>

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

// The example's text with each edit made wherever it matches: a label holds its name twice.
std::string Edited(const char* example,
                   std::initializer_list<std::pair<const char*, const char*>> edits) {
    std::string text = test::ExampleText(example);
    for (const auto& [from, to] : edits) {
        text = std::regex_replace(text, std::regex(from), to); // plain texts, no patterns
    }
    return text;
}

TEST(SolvedExamples, EachExampleAndVariantSolvesAsWorkedByHand) {
    const struct {
        const char* name;
        std::string text;
        int autoName; // 0 keeps the names of the file
    } cases[] = {
        {"voltage_divider", Edited("voltage_divider.amq", {}), 1},
        // Without a reference: B is relative to V1, the last in name order, which is set to 0.
        {"voltage_divider_reference_B", Edited("voltage_divider.amq", {{"\"0\"", "\"B\""}}), 0},
        {"voltage_divider_reference_Z", Edited("voltage_divider.amq", {{"\"0\"", "\"Z\""}}), 0},
        {"voltage_divider_battery_turned",
         Edited("voltage_divider.amq", {{"80,160,1,12", "80,160,2,12"}}), 0},
        // The battery alone joins V1 to the reference: nothing is left to solve for.
        {"voltage_divider_battery_alone",
         Edited("voltage_divider.amq", {{"160,80,6,1000\r\n", ""}, {"\r\n4\r\n", "\r\n3\r\n"}}), 1},
        // The reference inside a supernode. V2 = 660/101, V3 = 650/101 by hand.
        {"wheatstone_bridge", Edited("wheatstone_bridge.amq", {}), 1},
        {"wheatstone_bridge_reference_Z", Edited("wheatstone_bridge.amq", {{"\"0\"", "\"Z\""}}), 0},
        {"wheatstone_bridge_reference_V4", Edited("wheatstone_bridge.amq", {{"\"0\"", "\"V4\""}}),
         0},
        // A name with a comma is quoted in the CSV and sorts before V2.
        {"wheatstone_bridge_comma", Edited("wheatstone_bridge.amq", {{"\"V3\"", "\"V,3\""}}), 0},
        // (V1 - 5)/20 + V1/10 = 2 gives V1 = 15.
        {"current_source", Edited("current_source.amq", {}), 1},
        // V1/4 + (V1 + 6)/6 + (V1 + 6)/12 = 2 gives V1 = 1, and V2 = V1 + 6.
        {"supernode", Edited("supernode.amq", {}), 1},
        {"supernode_reference_Z", Edited("supernode.amq", {{"\"0\"", "\"Z\""}}), 0},
        // Named first, A leaves the supernode's members V1 and V2 last in order.
        {"supernode_reference_A", Edited("supernode.amq", {{"\"0\"", "\"A\""}}), 0},
        // By hand, exactly: V1 = 165/36, V2 = 25/9, V3 = 5/9, V4 = -195/36, V5 = 50/9.
        {"two_supernodes", Edited("two_supernodes.amq", {}), 1},
        {"two_supernodes_reference_Z", Edited("two_supernodes.amq", {{"\"0\"", "\"Z\""}}), 0},
        // Every kind of device in every direction: two top resistors made batteries pushing
        // left and right, a bottom resistor made a source pushing left.
        {"two_supernodes_every_direction",
         Edited("two_supernodes.amq", {{"320,80,6,10", "320,80,3,10"},
                                       {"480,80,6,20", "480,80,4,20"},
                                       {"320,240,6,30", "320,240,9,1"}}),
         0},
        // (V1 - 9)/3 + V1/6 + V1/(4 + 8) = 0 gives V1 = 36/7.
        {"t_junctions", Edited("t_junctions.amq", {}), 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::SolveSession session;
        test::Solve(session, c.text, c.autoName);
        const std::string dump = Dump(session);
        const std::string file = std::string("examples/") + c.name + ".txt";
        EXPECT_EQ(dump, test::ExpectedText(file, dump));
    }
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
