#include "analysis/diagram_descriptions.h"
#include "support/solve_session.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ampora {
namespace {

// Every sentence of the diagram in the step the session reached, one per line.
// `shown` holds the value labels as drawn, by slot.
std::string AllSentences(const Workspace& ws, const std::vector<std::string>& shown = {}) {
    std::string out;
    for (int slot = 1; slot <= ws.circuit.NumWires; ++slot) {
        if (ws.circuit.Wires[slot].Used != 0) {
            out += DescribeWire(ws.circuit, slot, shown) + "\n";
        }
    }
    for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
        if (ws.circuit.Elements[slot].Kind != kEmpty) {
            const std::string label = static_cast<std::size_t>(slot) < shown.size()
                                          ? shown[static_cast<std::size_t>(slot)]
                                          : "";
            out += DescribeDevice(ws, slot, label, ws.preferences.SigFigs) + "\n";
        }
    }
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        out += DescribeNode(ws, slot, ws.preferences.SigFigs) + "\n";
    }
    return out;
}

// The solved examples' sentences are in their dumps (tests/data/examples/).
TEST(DiagramDescriptions, BeforeTheResultsDevicesLieBetweenNodesAndWhileEditingAtPoints) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("voltage_divider.amq"), 0);
    ASSERT_TRUE(session.solved);
    Workspace& ws = session.ws;
    BackToStep2(ws);
    ws.circuit.NodeLabels[1].Name.clear();
    EXPECT_EQ(AllSentences(ws).substr(AllSentences(ws).find("Resistor")),
              "Resistor, 1000 Ω, between an unnamed node and 0\n"
              "Battery, 12 V, between an unnamed node and 0\n"
              "Resistor, 2000 Ω, between an unnamed node and 0\n"
              "Resistor, 2000 Ω, between an unnamed node and 0\n"
              "Unnamed node, at (240, 80), joining 3 wires\n"
              "Node 0, the reference, at (240, 240), joining 3 wires\n");

    BackToStep1(ws);
    ws.circuit.NumNodes = 0;
    const std::string sentences = AllSentences(ws, {"", "1k Ω", "12 V", "2000 Ω", "2e3 Ω"});
    EXPECT_EQ(sentences.substr(0, sentences.find('\n')),
              "Wire from (80, 80) to (240, 80), carrying the resistor 1k Ω");
    EXPECT_EQ(sentences.substr(sentences.find("Resistor")),
              "Resistor, 1k Ω, horizontal, at (160, 80)\n"
              "Battery, 12 V, vertical, at (80, 160)\n"
              "Resistor, 2000 Ω, vertical, at (240, 160)\n"
              "Resistor, 2e3 Ω, vertical, at (400, 160)\n");
}

} // namespace
} // namespace ampora
