#pragma once
// The diagram for the report: what the main window shows in the workspace's current view,
// painted off screen by the window's own painter and cropped to the circuit.

#include <QImage>

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

// Cropped to GetCircuitExtents (6 units of margin round wires, devices and labels) plus 2,
// at `scale` device pixels per canvas unit so that it prints sharply. An empty circuit gives
// a null image.
QImage CircuitPaint(const Workspace& ws, qreal scale = 2);

} // namespace ampora::ui
