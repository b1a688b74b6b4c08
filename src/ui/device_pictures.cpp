#include "ui/device_pictures.h"

#include "tables/circuit.h"

#include <QPainter>
#include <QPainterPath>

namespace ampora::ui {

namespace {

// Each symbol is drawn pointing right (its direction, or its axis) in a 32 by 32 box
// centred on the origin, then turned for the kind.
void BatteryRight(QPainter& p, const QColor& ink) {
    QPen lead(ink, 1.6, Qt::SolidLine, Qt::FlatCap);
    p.setPen(lead);
    p.drawLine(QPointF(-16, 0), QPointF(-3, 0));
    p.drawLine(QPointF(3, 0), QPointF(16, 0));
    // The short thick plate is the negative terminal; the long thin one the positive.
    p.setPen(QPen(ink, 4, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(-3, -6), QPointF(-3, 6));
    p.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(3, -12), QPointF(3, 12));
    p.setPen(QPen(ink, 1.2, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(7, -11), QPointF(13, -11)); // "+"
    p.drawLine(QPointF(10, -14), QPointF(10, -8));
}

void ResistorAlong(QPainter& p, const QColor& ink) {
    QPainterPath zigzag(QPointF(-16, 0));
    zigzag.lineTo(-11, 0);
    const float step = 22.0f / 6;
    for (int i = 0; i < 6; ++i) {
        const float x = -11 + step * (static_cast<float>(i) + 0.5f);
        zigzag.lineTo(x, i % 2 == 0 ? -6 : 6);
    }
    zigzag.lineTo(11, 0);
    zigzag.lineTo(16, 0);
    p.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(zigzag);
}

void SourceRight(QPainter& p, const QColor& ink) {
    p.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    p.drawLine(QPointF(-16, 0), QPointF(-11, 0));
    p.drawLine(QPointF(11, 0), QPointF(16, 0));
    p.drawEllipse(QPointF(0, 0), 11, 11);
    p.drawLine(QPointF(-6, 0), QPointF(3, 0));
    QPainterPath head(QPointF(7, 0));
    head.lineTo(1, -4);
    head.lineTo(1, 4);
    head.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawPath(head);
}

} // namespace

void PaintDevice(QPainter& painter, int kind, const QRectF& box, const QColor& ink, bool opaque) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (opaque) {
        painter.fillRect(box, Qt::white);
    }
    painter.translate(box.center());
    painter.scale(box.width() / 32, box.height() / 32);
    // Angle that turns the right-pointing symbol to the kind's direction (y grows down).
    double angle = 0;
    switch (kind) {
    case kBatteryUp:
    case kSourceUp:
    case kResistorVertical:
        angle = -90;
        break;
    case kBatteryDown:
    case kSourceDown:
        angle = 90;
        break;
    case kBatteryLeft:
    case kSourceLeft:
        angle = 180;
        break;
    default:
        break;
    }
    painter.rotate(angle);
    if (IsBattery(kind)) {
        BatteryRight(painter, ink);
    } else if (IsResistor(kind)) {
        ResistorAlong(painter, ink);
    } else if (IsCurrentSource(kind)) {
        SourceRight(painter, ink);
    }
    painter.restore();
}

} // namespace ampora::ui
