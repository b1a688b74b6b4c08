#pragma once
// Where every label of the circuit diagram goes: the value label beside each device and, from
// step 2 on, the name label beside each node dot. The window, its hit tests and the report's
// picture of the diagram all use this one layout, so a label is clicked where it is drawn.

#include "editor/value_labels.h"
#include "tables/circuit.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ampora {

// Measures text as it will be drawn: its width and the line height of the label font.
struct LabelMetrics {
    std::function<float(std::string_view)> ValueWidth;
    float ValueHeight = 0;
    std::function<float(std::string_view)> NodeWidth;
    float NodeHeight = 0;
};

struct PlacedLabel {
    std::string Text;
    LabelBox Box;
};

struct DiagramLabels {
    std::vector<PlacedLabel> Values; // by element slot, 0 unused; empty text for empty slots
    std::vector<PlacedLabel> Nodes;  // by node slot, 0 unused; empty when nodes are not shown
};

// Half the side of a node dot, in canvas units.
inline constexpr float kNodeDotRadius = 4;

// Lays out the value texts (by element slot) and, when withNodes, every node's label: the text
// of nodeTexts (by node slot) where given, else the node's name. Value
// labels are placed first, each on the first side of its device that covers no wire, device
// or earlier label; node labels then take the first corner of their dot that covers none of
// those. Where every place is taken the first one is used.
DiagramLabels LayOutDiagramLabels(const Circuit& circuit, const std::vector<std::string>& values,
                                  bool withNodes, const LabelMetrics& metrics,
                                  const std::vector<std::string>& nodeTexts = {});

// The node whose label contains the point, 0 for none.
int NodeLabelAt(const DiagramLabels& labels, float x, float y);

// The smallest box holding every live wire, device picture, node dot and label.
LabelBox DiagramExtent(const Circuit& circuit, const DiagramLabels& labels);

} // namespace ampora
