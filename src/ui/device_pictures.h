#pragma once
// The schematic symbols of the ten device kinds, drawn as vector paths in a 32 by 32 box
// so they stay crisp at any screen scale.

#include <QColor>
#include <QRectF>

class QPainter;

namespace ampora::ui {

// Draws device `kind` (1..10) filling `box`; the leads reach the middle of the two sides
// the wire enters by. `ink` is black normally, red for a highlighted battery. An opaque
// picture first whitens its box, hiding the wire it sits on.
void PaintDevice(QPainter& painter, int kind, const QRectF& box, const QColor& ink = Qt::black,
                 bool opaque = true);

} // namespace ampora::ui
