#include "analysis/result_labels.h"
#include "document/circuit_edit.h"
#include "editor/diagram_labels.h"
#include "editor/drawing_session.h"
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

// Where each label, each node's name and the whole drawing's extent go, with anything a label
// covers. Seven units a character: a node's name "V1" is 19 wide, a value label 14 high.
TEST(DiagramLabels, LabelsAndNamesGoWhereTheyAreReadable) {
    struct Case {
        const char* drawing; // beside the corner
        std::vector<std::string> texts;
        const char* placed;
    };
    // A node at the corner of an L: wires run right and down from it.
    const std::string corner = "100,100-200,100 100,100-100,200 n@100,100=V1 ";
    const Case cases[] = {
        // The wires that meet at the node never reach into a corner: the upper right is free.
        {"", {}, "name 1 at 106,79; extent 97,79 203,203"},
        // A wire passing just above crosses both upper corners; the lower right is free.
        {"60,85-200,85", {}, "name 1 at 106,106; extent 57,82 203,203"},
        // A long label, centred above the resistor, reaches back over both upper corners.
        {"6@150,100=10",
         {"", "123456789012345678 W"},
         "label 1 at 80,67; name 1 at 106,106; extent 80,67 220,203"},
        // The battery's label right of its picture, 21 wide; the name above the dot.
        {"1@100,150=5", {"", "5 V"}, "label 1 at 119,143; name 1 at 106,79; extent 84,79 203,203"},
    };
    for (const Case& c : cases) {
        const Circuit circuit = test::ParseDrawing(corner + c.drawing);
        const DiagramLabels labels = LayOutDiagramLabels(circuit, c.texts, true, FixedMetrics());
        std::string placed;
        for (std::size_t v = 1; v < labels.Values.size(); ++v) {
            placed += labels.Values[v].Text.empty() ? ""
                                                    : "label " + std::to_string(v) + " at " +
                                                          Where(labels.Values[v].Box) + "; ";
        }
        for (std::size_t n = 1; n < labels.Nodes.size(); ++n) {
            placed += "name " + std::to_string(n) + " at " + Where(labels.Nodes[n].Box) + "; ";
        }
        const LabelBox extent = DiagramExtent(circuit, labels);
        placed += "extent " + Where(extent) + " " +
                  Where({extent.Left + extent.Width, extent.Top + extent.Height, 0, 0});
        for (const std::string& collision : Collisions(circuit, labels)) {
            placed += "; " + collision;
        }
        EXPECT_EQ(placed, c.placed) << c.drawing;
    }
    const DiagramLabels labels =
        LayOutDiagramLabels(test::ParseDrawing(corner), {}, true, FixedMetrics());
    EXPECT_EQ(NodeLabelAt(labels, 110, 85), 1);
    EXPECT_EQ(NodeLabelAt(labels, 100, 100), 0); // the dot itself is no button
    EXPECT_EQ(NodeLabelAt(labels, 140, 85), 0);
}

TEST(DiagramLabels, ALongLabelSlidesAlongItsSideWhenTheMiddleIsTaken) {
    const Circuit circuit = test::ParseDrawing("0,100-400,100 6@100,100=10 6@170,100=10");
    const DiagramLabels labels =
        LayOutDiagramLabels(circuit, {"", "0.0012345678", "0.0087654321"}, false, FixedMetrics());
    EXPECT_EQ(Where(labels.Values[1].Box), "58,67");
    // The middle above and below would overlap the first label or nothing; above at the
    // picture's right end is clear of it.
    EXPECT_EQ(Collisions(circuit, labels), std::vector<std::string>{});
    EXPECT_TRUE(labels.Nodes.empty());
}

TEST(ValueLabels, TheTypedTextOrTheStoredValueIsFollowedByTheUnit) {
    EXPECT_EQ(ValueLabelText(Element{kBatteryUp, 12, 0, 0, 0, 999}, "012"), "012 V");
    EXPECT_EQ(ValueLabelText(Element{kResistorHorizontal, 2200, 0, 0, 0, 999}, ""), "2200 \u03A9");
    EXPECT_EQ(ValueLabelText(Element{kSourceRight, 0.5f, 0, 0, 0, 999}, ""), "0.5 A");
}

TEST(ValueLabels, ALabelGoesToTheFirstSideThatCoversNoWire) {
    Circuit circuit = test::ParseDrawing("80,80-240,80 240,80-240,240 6@160,80=1 1@240,160=1");
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
