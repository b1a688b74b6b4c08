#include "ui/tool_icons.h"

#include "tables/circuit.h"
#include "ui/device_pictures.h"
#include "ui/palette.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <functional>

namespace ampora::ui {

namespace {

using Drawing = std::function<void(QPainter&)>;

// Paints its drawing into any rectangle, so the icon is sharp at every size and scale.
class PaintedIconEngine : public QIconEngine {
  public:
    explicit PaintedIconEngine(Drawing drawing) : drawing_(std::move(drawing)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 32.0, rect.height() / 32.0);
        if (mode == QIcon::Disabled) {
            painter->setOpacity(0.3);
        }
        drawing_(*painter);
        painter->restore();
    }
    QIconEngine* clone() const override { return new PaintedIconEngine(drawing_); }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override {
        QPixmap pixmap = this->pixmap(size * scale, mode, state);
        pixmap.setDevicePixelRatio(scale);
        return pixmap;
    }

  private:
    Drawing drawing_;
};

void Wire(QPainter& p) {
    p.setPen(QPen(QBColor(9), 3, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    QPainterPath path(QPointF(6, 8));
    path.lineTo(6, 25);
    path.lineTo(26, 25);
    p.drawPath(path);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x33, 0x33, 0x33));
    p.drawEllipse(QPointF(6, 7), 2.5, 2.5);
    p.drawEllipse(QPointF(26, 25), 2.5, 2.5);
}

void Number(QPainter& p) {
    p.setPen(QPen(Qt::black, 1.2));
    p.setBrush(QColor(0xFF, 0xFF, 0xE8));
    p.drawRoundedRect(QRectF(3, 7, 26, 18), 3, 3);
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(13);
    font.setBold(true);
    p.setFont(font);
    p.drawText(QRectF(3, 7, 26, 18), Qt::AlignCenter, QStringLiteral("1.5"));
}

void MoveStretch(QPainter& p) {
    p.setPen(QPen(Qt::black, 1.6, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(16, 5), QPointF(16, 27));
    p.drawLine(QPointF(5, 16), QPointF(27, 16));
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::black);
    for (int turn = 0; turn < 4; ++turn) {
        p.save();
        p.translate(16, 16);
        p.rotate(90.0 * turn);
        QPainterPath head(QPointF(13, 0));
        head.lineTo(8, -4.5);
        head.lineTo(8, 4.5);
        head.closeSubpath();
        p.drawPath(head);
        p.restore();
    }
}

void Eraser(QPainter& p) {
    p.save();
    p.translate(16, 17);
    p.rotate(-35);
    p.setPen(QPen(Qt::black, 1.3));
    p.setBrush(QColor(0xF4, 0x9A, 0xB0));
    p.drawRect(QRectF(-12, -6, 11, 12));
    p.setBrush(QColor(0xE8, 0xE8, 0xF4));
    p.drawRect(QRectF(-1, -6, 13, 12));
    p.restore();
    p.setPen(QPen(QColor(0x88, 0x88, 0x88), 1.2));
    p.drawLine(QPointF(4, 28), QPointF(28, 28));
}

void UndoErase(QPainter& p) {
    p.setPen(QPen(QColor(0x20, 0x60, 0x20), 2.4, Qt::SolidLine, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    QPainterPath arc(QPointF(9, 13));
    arc.cubicTo(QPointF(16, 5), QPointF(28, 9), QPointF(26, 19));
    arc.cubicTo(QPointF(25, 25), QPointF(19, 27), QPointF(14, 26));
    p.drawPath(arc);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x20, 0x60, 0x20));
    QPainterPath head(QPointF(4, 8));
    head.lineTo(13, 8);
    head.lineTo(6, 17);
    head.closeSubpath();
    p.drawPath(head);
}

} // namespace

QIcon ToolIcon(int tool) {
    Drawing drawing;
    switch (tool) {
    case 1:
        drawing = Wire;
        break;
    case 2:
        drawing = [](QPainter& p) {
            PaintDevice(p, kBatteryRight, QRectF(1, 1, 30, 30), Qt::black, false);
        };
        break;
    case 3:
        drawing = [](QPainter& p) {
            PaintDevice(p, kResistorHorizontal, QRectF(1, 1, 30, 30), Qt::black, false);
        };
        break;
    case 4:
        drawing = [](QPainter& p) {
            PaintDevice(p, kSourceUp, QRectF(1, 1, 30, 30), Qt::black, false);
        };
        break;
    case 5:
        drawing = Number;
        break;
    case 6:
        drawing = MoveStretch;
        break;
    case 7:
        drawing = Eraser;
        break;
    default:
        drawing = UndoErase;
        break;
    }
    return QIcon(new PaintedIconEngine(std::move(drawing)));
}

} // namespace ampora::ui
