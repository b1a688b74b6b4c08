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

TEST(DiagramDescriptions, TheSolvedDividerIsToldDeviceByDeviceWithItsCurrents) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("voltage_divider.amq"), 1);
    ASSERT_TRUE(session.solved);
    EXPECT_EQ(AllSentences(session.ws),
              "Wire from (80, 80) to (240, 80), carrying the resistor\n"
              "Wire from (240, 80) to (400, 80)\n"
              "Wire from (80, 80) to (80, 240), carrying the battery\n"
              "Wire from (240, 80) to (240, 240), carrying the resistor\n"
              "Wire from (400, 80) to (400, 240), carrying the resistor\n"
              "Wire from (80, 240) to (240, 240)\n"
              "Wire from (240, 240) to (400, 240)\n"
              "Resistor, 1000 Ω, from 0 to V1; current 0.006 A rightward\n"
              "Battery, 12 V, from 0 to V1; current 0.006 A upward\n"
              "Resistor, 2000 Ω, from V1 to 0; current 0.003 A downward\n"
              "Resistor, 2000 Ω, from V1 to 0; current 0.003 A downward\n"
              "Node V1, 6 V\n"
              "Node 0, the reference, 0 V\n");
}

TEST(DiagramDescriptions, BeforeTheResultsDevicesLieBetweenNodesAndWhileEditingAtPoints) {
    test::SolveSession session;
    // The battery turned round: the current runs the other way, and a source of no current
    // gives no direction.
    test::Solve(session, test::ExampleText("voltage_divider.amq", "80,160,1,12", "80,160,2,12"), 0);
    ASSERT_TRUE(session.solved);
    Workspace& ws = session.ws;
    const std::string devices = "Resistor, 1000 Ω, from V1 to 0; current 0.006 A leftward\n"
                                "Battery, 12 V, from V1 to 0; current 0.006 A downward\n"
                                "Resistor, 2000 Ω, from 0 to V1; current 0.003 A upward\n";
    EXPECT_NE(AllSentences(ws).find(devices), std::string::npos) << AllSentences(ws);

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
