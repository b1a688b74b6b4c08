#pragma once
// The diagram as the main window shows it in steps 2 and 3, painted off screen and cropped to
// the circuit: what the report puts in for the circuit and its voltage, current and power
// views.

#include "report/circuit_extents.h"

#include <QImage>
#include <vector>

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

// Value labels and node labels with their texts and where they sit, in canvas units. In the
// voltage view of step 3 a node's label adds its voltage to its name ("V1 = 6").
struct PlacedLabel {
    QString Text;
    LabelRect Rect;
    bool NodeLabel = false;
};
std::vector<PlacedLabel> LayOutResultLabels(const Workspace& ws);

// The diagram in ws.ViewMode: wires, supernode chains, node dots, device pictures and labels,
// cropped to the extents of the circuit (6 units of margin) plus 2, drawn at `scale` device
// pixels per unit. An empty circuit gives a null image.
QImage CircuitPaint(const Workspace& ws, qreal scale = 2);

} // namespace ampora::ui
