#include "analysis/result_labels.h"
#include "document/circuit_edit.h"
#include "editor/diagram_labels.h"
#include "editor/value_labels.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <sstream>

namespace ampora {
namespace {

// Seven units a character, a line of 14: about the label font at the screen's size.
LabelMetrics FixedMetrics() {
    LabelMetrics metrics;
    metrics.ValueWidth = [](std::string_view text) { return 7.0f * float(text.size()); };
    metrics.ValueHeight = 14;
    metrics.NodeWidth = [](std::string_view text) { return 7.0f * float(text.size()) + 5; };
    metrics.NodeHeight = 15;
    return metrics;
}

std::string Where(const LabelBox& box) {
    std::ostringstream out;
    out << box.Left << "," << box.Top;
    return out.str();
}

LabelBox WireBand(const Wire& w) {
    const float left = std::min(w.X1, w.X2) - 3;
    const float top = std::min(w.Y1, w.Y2) - 3;
    return LabelBox{left, top, std::max(w.X1, w.X2) + 3 - left, std::max(w.Y1, w.Y2) + 3 - top};
}

// Every way one label can be unreadable or misleading, one line each.
std::vector<std::string> Collisions(const Circuit& circuit, const DiagramLabels& labels) {
    std::vector<std::string> found;
    const auto check = [&](const std::string& what, const LabelBox& box, int ownElement,
                           int ownIndex, bool isNode) {
        for (int w = 1; w <= circuit.NumWires; ++w) {
            if (circuit.Wires[w].Used != 0 && BoxesOverlap(box, WireBand(circuit.Wires[w]))) {
                found.push_back(what + " covers wire " + std::to_string(w));
            }
        }
        for (int e = 1; e <= circuit.NumElements; ++e) {
            const Element& el = circuit.Elements[e];
            if (e != ownElement && el.Kind != kEmpty &&
                BoxesOverlap(box, LabelBox{el.X - 16, el.Y - 16, 32, 32})) {
                found.push_back(what + " covers device " + std::to_string(e));
            }
        }
        for (std::size_t v = 1; v < labels.Values.size(); ++v) {
            if ((isNode || int(v) != ownIndex) && !labels.Values[v].Text.empty() &&
                BoxesOverlap(box, labels.Values[v].Box)) {
                found.push_back(what + " covers the label of device " + std::to_string(v));
            }
        }
        for (std::size_t n = 1; n < labels.Nodes.size(); ++n) {
            if ((!isNode || int(n) != ownIndex) && BoxesOverlap(box, labels.Nodes[n].Box)) {
                found.push_back(what + " covers the name of node " + std::to_string(n));
            }
        }
    };
    for (std::size_t v = 1; v < labels.Values.size(); ++v) {
        const PlacedLabel& label = labels.Values[v];
        if (label.Text.empty()) {
            continue;
        }
        const std::string what = "label \"" + label.Text + "\" of device " + std::to_string(v);
        check(what, label.Box, int(v), int(v), false);
        // Beside its own device: touching the picture's box widened by a few units.
        const Element& e = circuit.Elements[int(v)];
        if (!BoxesOverlap(label.Box, LabelBox{e.X - 20, e.Y - 20, 40, 40})) {
            found.push_back(what + " is not beside its device");
        }
    }
    for (std::size_t n = 1; n < labels.Nodes.size(); ++n) {
        const std::string what =
            "name \"" + labels.Nodes[n].Text + "\" of node " + std::to_string(n);
        check(what, labels.Nodes[n].Box, 0, int(n), true);
    }
    return found;
}

TEST(DiagramLabels, NoLabelOfAnyExampleCoversAWireADeviceOrAnotherLabelInAnyView) {
    for (const auto& file : test::ExampleFiles()) {
        test::SolveSession session;
        test::Solve(session, test::ReadBytes(file), 1);
        ASSERT_TRUE(session.solved) << file;
        for (int view = 0; view <= 3; ++view) {
            std::vector<std::string> texts(size_t(session.ws.Circuit.NumElements) + 1);
            for (int slot = 1; slot <= session.ws.Circuit.NumElements; ++slot) {
                if (session.ws.Circuit.Elements[slot].Kind != kEmpty) {
                    // The longest texts a view can show, at eight figures.
                    texts[size_t(slot)] = ElementLabel(session.ws, slot, view, 8);
                }
            }
            const DiagramLabels labels =
                LayOutDiagramLabels(session.ws.Circuit, texts, true, FixedMetrics(),
                                    NodeLabelTexts(session.ws, view, 8));
            EXPECT_EQ(Collisions(session.ws.Circuit, labels), std::vector<std::string>{})
                << file.filename() << " view " << view;
        }
    }
}

// A node at the corner of an L: wires run right and down from it.
Circuit Corner() {
    Circuit circuit;
    AddWire(circuit, 100, 100, 200, 100);
    AddWire(circuit, 100, 100, 100, 200);
    circuit.NumNodes = 1;
    circuit.NodeLabels[1].X = 100;
    circuit.NodeLabels[1].Y = 100;
    circuit.NodeLabels[1].Name = "V1";
    return circuit;
}

TEST(DiagramLabels, ANodeNameTakesTheFirstFreeCornerOfItsDot) {
    Circuit circuit = Corner();
    const LabelMetrics metrics = FixedMetrics();
    EXPECT_EQ(Where(LayOutDiagramLabels(circuit, {}, true, metrics).Nodes[1].Box), "106,79");
    // The wires that meet at the node never reach into a corner, but a wire passing just
    // above it crosses both upper ones; the lower right is free.
    AddWire(circuit, 60, 85, 200, 85);
    EXPECT_EQ(Where(LayOutDiagramLabels(circuit, {}, true, metrics).Nodes[1].Box), "106,106");
}

TEST(DiagramLabels, ANodeNameMakesWayForAValueLabel) {
    Circuit circuit = Corner();
    AddElement(circuit, kResistorHorizontal, 10, 150, 100);
    // A long label, centred above the resistor, reaches back over the node's upper right.
    const DiagramLabels labels =
        LayOutDiagramLabels(circuit, {"", "123456789012345678 W"}, true, FixedMetrics());
    EXPECT_EQ(Where(labels.Values[1].Box), "80,67");
    // Both upper corners run into it; the lower right is free.
    EXPECT_EQ(Where(labels.Nodes[1].Box), "106,106");
    EXPECT_EQ(Collisions(circuit, labels), std::vector<std::string>{});
}

TEST(DiagramLabels, ALongLabelSlidesAlongItsSideWhenTheMiddleIsTaken) {
    Circuit circuit;
    AddWire(circuit, 0, 100, 400, 100);
    AddElement(circuit, kResistorHorizontal, 10, 100, 100);
    AddElement(circuit, kResistorHorizontal, 10, 170, 100);
    const DiagramLabels labels =
        LayOutDiagramLabels(circuit, {"", "0.0012345678", "0.0087654321"}, false, FixedMetrics());
    EXPECT_EQ(Where(labels.Values[1].Box), "58,67");
    // The middle above and below would overlap the first label or nothing; above at the
    // picture's right end is clear of it.
    EXPECT_EQ(Collisions(circuit, labels), std::vector<std::string>{});
    EXPECT_TRUE(labels.Nodes.empty());
}

TEST(DiagramLabels, AClickFindsTheNodeWhoseNameIsUnderIt) {
    const Circuit circuit = Corner();
    const DiagramLabels labels = LayOutDiagramLabels(circuit, {}, true, FixedMetrics());
    EXPECT_EQ(NodeLabelAt(labels, 110, 85), 1);
    EXPECT_EQ(NodeLabelAt(labels, 100, 100), 0); // the dot itself is no button
    EXPECT_EQ(NodeLabelAt(labels, 140, 85), 0);
}

TEST(DiagramLabels, TheExtentHoldsWiresPicturesAndLabels) {
    Circuit circuit = Corner();
    AddElement(circuit, kBatteryUp, 5, 100, 150);
    const DiagramLabels labels = LayOutDiagramLabels(circuit, {"", "5 V"}, true, FixedMetrics());
    const LabelBox extent = DiagramExtent(circuit, labels);
    // The battery's label to the right of the picture (119 + 21); the name above the dot.
    EXPECT_EQ(Where(extent), "84,79");
    EXPECT_EQ(extent.Left + extent.Width, 203);
    EXPECT_EQ(extent.Top + extent.Height, 203);
}

TEST(ValueLabels, TheTypedTextOrTheStoredValueIsFollowedByTheUnit) {
    EXPECT_EQ(ValueLabelText(Element{kBatteryUp, 12, 0, 0, 0, 999}, "012"), "012 V");
    EXPECT_EQ(ValueLabelText(Element{kResistorHorizontal, 2200, 0, 0, 0, 999}, ""), "2200 \u03A9");
    EXPECT_EQ(ValueLabelText(Element{kSourceRight, 0.5f, 0, 0, 0, 999}, ""), "0.5 A");
}

TEST(ValueLabels, ALabelGoesToTheFirstSideThatCoversNoWire) {
    Circuit circuit;
    AddWire(circuit, 80, 80, 240, 80);
    AddWire(circuit, 240, 80, 240, 240);
    AddElement(circuit, kResistorHorizontal, 1, 160, 80);
    AddElement(circuit, kBatteryUp, 1, 240, 160);
    std::string sides = Where(PlaceValueLabel(circuit, 1, 40, 14)) + " " + // above
                        Where(PlaceValueLabel(circuit, 2, 40, 14));        // right
    AddWire(circuit, 270, 100, 270, 200); // a wire on the right pushes it left
    sides += " " + Where(PlaceValueLabel(circuit, 2, 40, 14));
    AddWire(circuit, 100, 60, 200, 60); // a wire above pushes it below
    sides += " " + Where(PlaceValueLabel(circuit, 1, 40, 14));
    EXPECT_EQ(sides, "140,47 259,153 181,153 140,99");
}

} // namespace
} // namespace ampora
