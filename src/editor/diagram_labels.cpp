#include "editor/diagram_labels.h"

#include <algorithm>
#include <array>
#include <vector>

namespace ampora {

namespace {

// Places for a node's label around its dot, in the order they are tried. The four corners come
// first: the wires that meet at a node run along its row and column, never into a corner. A
// long label (a name with its voltage) that finds every near place taken moves further out
// into the corners, a line at a time.
std::vector<LabelBox> NodeLabelPlaces(const NodeLabel& node, float width, float height) {
    constexpr float kOff = kNodeDotRadius + 2;
    const float x = node.X;
    const float y = node.Y;
    std::vector<LabelBox> places{LabelBox{x + kOff, y - kOff - height, width, height},
                                 LabelBox{x - kOff - width, y - kOff - height, width, height},
                                 LabelBox{x + kOff, y + kOff, width, height},
                                 LabelBox{x - kOff - width, y + kOff, width, height},
                                 LabelBox{x + kOff + 2, y - height / 2, width, height},
                                 LabelBox{x - kOff - 2 - width, y - height / 2, width, height},
                                 LabelBox{x - width / 2, y - kOff - 2 - height, width, height},
                                 LabelBox{x - width / 2, y + kOff + 2, width, height}};
    for (int line = 1; line <= 3; ++line) {
        const float out = static_cast<float>(line) * height;
        places.push_back(LabelBox{x + kOff, y - kOff - height - out, width, height});
        places.push_back(LabelBox{x - kOff - width, y - kOff - height - out, width, height});
        places.push_back(LabelBox{x + kOff, y + kOff + out, width, height});
        places.push_back(LabelBox{x - kOff - width, y + kOff + out, width, height});
    }
    return places;
}

LabelBox DotBox(const NodeLabel& node) {
    return LabelBox{node.X - kNodeDotRadius, node.Y - kNodeDotRadius, 2 * kNodeDotRadius,
                    2 * kNodeDotRadius};
}

} // namespace

DiagramLabels LayOutDiagramLabels(const Circuit& circuit, const std::vector<std::string>& values,
                                  bool withNodes, const LabelMetrics& metrics,
                                  const std::vector<std::string>& nodeTexts) {
    DiagramLabels labels;
    labels.Values.resize(static_cast<std::size_t>(circuit.NumElements) + 1);
    std::vector<LabelBox> taken;
    if (withNodes) {
        // No label may hide a node dot.
        for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
            taken.push_back(DotBox(circuit.NodeLabels[slot]));
        }
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        if (circuit.Elements[slot].Kind == kEmpty || index >= values.size()) {
            continue;
        }
        PlacedLabel& label = labels.Values[index];
        label.Text = values[index];
        label.Box = PlaceValueLabel(circuit, slot, metrics.ValueWidth(label.Text),
                                    metrics.ValueHeight, taken);
        taken.push_back(label.Box);
    }
    if (!withNodes) {
        return labels;
    }
    labels.Nodes.resize(static_cast<std::size_t>(circuit.NumNodes) + 1);
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& node = circuit.NodeLabels[slot];
        PlacedLabel& label = labels.Nodes[static_cast<std::size_t>(slot)];
        const auto index = static_cast<std::size_t>(slot);
        label.Text = index < nodeTexts.size() ? nodeTexts[index] : node.Name;
        const auto places =
            NodeLabelPlaces(node, metrics.NodeWidth(label.Text), metrics.NodeHeight);
        label.Box = places[0];
        for (const LabelBox& place : places) {
            if (BoxIsFree(circuit, 0, place, taken)) {
                label.Box = place;
                break;
            }
        }
        taken.push_back(label.Box);
    }
    return labels;
}

int NodeLabelAt(const DiagramLabels& labels, float x, float y) {
    for (std::size_t slot = 1; slot < labels.Nodes.size(); ++slot) {
        const LabelBox& b = labels.Nodes[slot].Box;
        if (x >= b.Left && x < b.Left + b.Width && y >= b.Top && y < b.Top + b.Height) {
            return static_cast<int>(slot);
        }
    }
    return 0;
}

LabelBox DiagramExtent(const Circuit& circuit, const DiagramLabels& labels) {
    bool any = false;
    float left = 0, top = 0, right = 0, bottom = 0;
    const auto take = [&](float l, float t, float r, float b) {
        if (!any) {
            left = l, top = t, right = r, bottom = b;
            any = true;
            return;
        }
        left = std::min(left, l);
        top = std::min(top, t);
        right = std::max(right, r);
        bottom = std::max(bottom, b);
    };
    for (int w = 1; w <= circuit.NumWires; ++w) {
        const Wire& wire = circuit.Wires[w];
        if (wire.Used != 0) {
            take(std::min(wire.X1, wire.X2) - 3, std::min(wire.Y1, wire.Y2) - 3,
                 std::max(wire.X1, wire.X2) + 3, std::max(wire.Y1, wire.Y2) + 3);
        }
    }
    for (int e = 1; e <= circuit.NumElements; ++e) {
        const Element& element = circuit.Elements[e];
        if (element.Kind != kEmpty) {
            take(element.X - 16, element.Y - 16, element.X + 16, element.Y + 16);
        }
    }
    for (const auto* list : {&labels.Values, &labels.Nodes}) {
        for (const PlacedLabel& label : *list) {
            if (!label.Text.empty()) {
                take(label.Box.Left, label.Box.Top, label.Box.Left + label.Box.Width,
                     label.Box.Top + label.Box.Height);
            }
        }
    }
    return LabelBox{left, top, right - left, bottom - top};
}

} // namespace ampora
