#pragma once
// The circuit diagram as the main window shows it and the report prints it: wires, the red
// lines of the supernodes, device pictures, node dots, and the value and node labels of a
// view. The canvas paints with it; the report asks for a finished picture.

#include "editor/diagram_labels.h"

#include <QFont>
#include <QImage>
#include <string>
#include <vector>

class QPainter;

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

QFont ValueLabelFont();
QFont NodeLabelFont();

// Widths and heights of label text in the two label fonts.
LabelMetrics QtLabelMetrics();

// The value label of every element slot in a view of the results (0 element values,
// 1 currents, 2 voltages, 3 power); empty for empty slots.
std::vector<std::string> ViewLabelTexts(const Workspace& ws, int viewMode, int sigFigs);

// The labels laid out with the Qt fonts; node names only when withNodes.
// Lays out the diagram of a view: its value texts and its node texts.
DiagramLabels LayOutView(const Workspace& ws, int viewMode, int sigFigs);
DiagramLabels LayOutDiagram(const Workspace& ws, const std::vector<std::string>& values,
                            bool withNodes);

struct DiagramLook {
    bool Nodes = false;          // steps 2 and 3: supernode lines, node dots and names
    bool ClickableNodes = false; // step 2: the names are framed as things to click
};

// Paints everything but the background and the grid, in canvas units.
void PaintDiagramOn(QPainter& painter, const Workspace& ws, const DiagramLabels& labels,
                    DiagramLook look);

} // namespace ampora::ui
