#pragma once
// The diagram for the report: what the main window shows in the workspace's current view,
// painted off screen by the window's own painter and cropped to the circuit.

#include "editor/diagram_labels.h"
#include "ui/diagram_painter.h"

#include <QImage>

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

// The part of the canvas CircuitPaint keeps before its border: GetCircuitExtents of the
// circuit with the boxes of the labels that have text.
void DiagramExtents(const Workspace& ws, const DiagramLabels& labels, float& top, float& bottom,
                    float& left, float& right);

// The diagram with these labels and look, cropped as CircuitPaint crops it, at `scale` device
// pixels per canvas unit. An empty circuit gives a null image.
QImage DiagramImage(const Workspace& ws, const DiagramLabels& labels, DiagramLook look,
                    qreal scale);

// Cropped to GetCircuitExtents (6 units of margin round wires, devices and labels) plus 2,
// at `scale` device pixels per canvas unit so that it prints sharply. An empty circuit gives
// a null image.
QImage CircuitPaint(const Workspace& ws, qreal scale = 2);

} // namespace ampora::ui
