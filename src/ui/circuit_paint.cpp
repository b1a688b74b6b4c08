#include "ui/circuit_paint.h"

#include "analysis/chain_path.h"
#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "document/workspace.h"
#include "editor/value_labels.h"
#include "ui/device_pictures.h"
#include "ui/palette.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <stdexcept>

namespace ampora::ui {

namespace {

QFont ResultLabelFont(bool nodeLabel) {
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(9);
    font.setBold(nodeLabel);
    return font;
}

// Canvas units are device-independent pixels; labels are measured as the screen shows them.
constexpr qreal kScreenDpi = 96;

QFontMetricsF Metrics(bool nodeLabel) {
    QImage probe(1, 1, QImage::Format_ARGB32_Premultiplied);
    const int dotsPerMeter = static_cast<int>(std::lround(kScreenDpi / 0.0254));
    probe.setDotsPerMeterX(dotsPerMeter);
    probe.setDotsPerMeterY(dotsPerMeter);
    return QFontMetricsF(ResultLabelFont(nodeLabel), &probe);
}

void PaintLine(QPainter& painter, QLineF line) {
    // Two units past each end, so lines meeting at a corner join without a gap.
    if (line.length() > 0) {
        const QPointF along = (line.p2() - line.p1()) / line.length() * 2;
        line = QLineF(line.p1() - along, line.p2() + along);
    }
    painter.drawLine(line);
}

// The chains of batteries and wire only join the nodes of a supernode; they are drawn red,
// each once (its "-" twin is the same chain traced back).
void PaintSupernodeChains(QPainter& painter, const Workspace& ws) {
    painter.setPen(QPen(QBColor(12), 3, Qt::SolidLine, Qt::FlatCap));
    for (int slot = 1; slot <= ws.topology.NumBranches; ++slot) {
        const Branch& branch = ws.topology.Branches[slot];
        if (branch.CurrentName.rfind('I', 0) != 0) {
            continue;
        }
        std::vector<Point> points;
        try {
            points = PathPoints(branch.Path);
        } catch (const std::invalid_argument&) {
            continue; // a chain without a readable path has nothing to draw
        }
        for (std::size_t k = 1; k < points.size(); ++k) {
            PaintLine(painter, QLineF(points[k - 1].X, points[k - 1].Y, points[k].X, points[k].Y));
        }
    }
}

} // namespace

std::vector<PlacedLabel> LayOutResultLabels(const Workspace& ws) {
    std::vector<PlacedLabel> labels;
    const Circuit& circuit = ws.circuit;
    const QFontMetricsF valueMetrics = Metrics(false);
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        if (circuit.Elements[slot].Kind == kEmpty) {
            continue;
        }
        const QString text =
            QString::fromStdString(ElementLabel(ws, slot, ws.ViewMode, ws.preferences.SigFigs));
        const LabelBox box =
            PlaceValueLabel(circuit, slot, static_cast<float>(valueMetrics.horizontalAdvance(text)),
                            static_cast<float>(valueMetrics.height()));
        labels.push_back({text, {box.Left, box.Top, box.Width, box.Height}, false});
    }
    const QFontMetricsF nodeMetrics = Metrics(true);
    for (int node = 1; node <= circuit.NumNodes; ++node) {
        const NodeLabel& n = circuit.NodeLabels[node];
        // The voltage view promises the reader a number beside each node.
        const std::string shown =
            ws.ViewMode == kViewVoltages && ws.Step == 3
                ? n.Name + " = " + FormatNumber(n.Voltage, ws.preferences.SigFigs)
                : n.Name;
        const QString text = QString::fromStdString(shown);
        // Up and to the right of the node's dot, clear of the wires that meet there.
        const auto height = static_cast<float>(nodeMetrics.height());
        labels.push_back({text,
                          {n.X + 4, n.Y - 3 - height,
                           static_cast<float>(nodeMetrics.horizontalAdvance(text)), height},
                          true});
    }
    return labels;
}

QImage CircuitPaint(const Workspace& ws, qreal scale) {
    const std::vector<PlacedLabel> labels = LayOutResultLabels(ws);
    std::vector<LabelRect> rects;
    for (const PlacedLabel& label : labels) {
        rects.push_back(label.Rect);
    }
    float top = 0, bottom = 0, left = 0, right = 0;
    GetCircuitExtents(ws.circuit, rects, top, bottom, left, right);
    const qreal width = right - left + 2;
    const qreal height = bottom - top + 2;
    if (width <= 0 || height <= 0) {
        return {};
    }
    QImage image(static_cast<int>(std::ceil(width * scale)),
                 static_cast<int>(std::ceil(height * scale)), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    const int dotsPerMeter = static_cast<int>(std::lround(kScreenDpi / 0.0254));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::white);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.translate(-left, -top);

    const Circuit& circuit = ws.circuit;
    painter.setPen(QPen(QBColor(9), 3, Qt::SolidLine, Qt::FlatCap));
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used != 0) {
            PaintLine(painter, QLineF(w.X1, w.Y1, w.X2, w.Y2));
        }
    }
    PaintSupernodeChains(painter, ws);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBColor(12));
    for (int node = 1; node <= circuit.NumNodes; ++node) {
        const NodeLabel& n = circuit.NodeLabels[node];
        painter.drawEllipse(QPointF(n.X, n.Y), 4, 4);
    }
    painter.setBrush(Qt::NoBrush);
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind != kEmpty) {
            PaintDevice(painter, e.Kind, QRectF(e.X - 16, e.Y - 16, 32, 32));
        }
    }
    for (const PlacedLabel& label : labels) {
        const QRectF area(label.Rect.Left, label.Rect.Top, label.Rect.Width + 1, label.Rect.Height);
        // On white, as on the canvas, so that no wire runs through the text.
        painter.fillRect(area.adjusted(-2, 0, 1, 0), Qt::white);
        painter.setFont(ResultLabelFont(label.NodeLabel));
        painter.setPen(Qt::black);
        painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter, label.Text);
    }
    return image;
}

} // namespace ampora::ui
