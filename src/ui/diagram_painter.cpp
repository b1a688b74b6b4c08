#include "ui/diagram_painter.h"

#include "analysis/chain_path.h"
#include "analysis/result_labels.h"
#include "tables/workspace.h"
#include "ui/device_pictures.h"
#include "ui/palette.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace ampora::ui {

namespace {

QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A wire, lengthened by two units past each end so that wires meeting at a corner join.
QLineF PaintedWire(float x1, float y1, float x2, float y2) {
    QLineF line(x1, y1, x2, y2);
    if (line.length() > 0) {
        const QPointF along = (line.p2() - line.p1()) / line.length() * 2;
        line = QLineF(line.p1() - along, line.p2() + along);
    }
    return line;
}

// A chain of batteries and wire only, taken once (not its "-" twin): it joins two members of
// a supernode.
bool JoinsSupernode(const Branch& chain) {
    return !chain.CurrentName.empty() && chain.CurrentName.front() == 'I';
}

bool OnSupernodeChain(const Workspace& ws, const Element& e) {
    if (e.Branch == 0 || std::abs(e.Branch) > ws.Topology.NumBranches) {
        return false;
    }
    return !ws.Topology.Branches[std::abs(e.Branch)].CurrentName.empty();
}

void PaintWires(QPainter& painter, const Circuit& circuit) {
    painter.setPen(QPen(QBColor(9), 3, Qt::SolidLine, Qt::FlatCap));
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used != 0) {
            painter.drawLine(PaintedWire(w.X1, w.Y1, w.X2, w.Y2));
        }
    }
}

void PaintSupernodeLines(QPainter& painter, const Topology& topology) {
    painter.setPen(QPen(QBColor(12), 3, Qt::SolidLine, Qt::FlatCap));
    for (int b = 1; b <= topology.NumBranches; ++b) {
        const Branch& chain = topology.Branches[b];
        if (!JoinsSupernode(chain)) {
            continue;
        }
        std::vector<Point> points;
        try {
            points = PathPoints(chain.Path);
        } catch (const std::exception&) {
            continue; // a path that does not read has nothing to draw
        }
        for (std::size_t i = 1; i < points.size(); ++i) {
            painter.drawLine(
                PaintedWire(points[i - 1].X, points[i - 1].Y, points[i].X, points[i].Y));
        }
    }
}

QRectF ToRect(const LabelBox& box) {
    return QRectF(box.Left, box.Top, box.Width, box.Height);
}

void PaintLabel(QPainter& painter, const PlacedLabel& label) {
    if (label.Text.empty()) {
        return;
    }
    // On white, so that no grid dot or line runs into the text.
    const QRectF area = ToRect(label.Box);
    painter.fillRect(area.adjusted(-2, 0, 2, 0), Qt::white);
    painter.drawText(area.adjusted(0, 0, 1, 0), Qt::AlignCenter, FromUtf8(label.Text));
}

} // namespace

QFont ValueLabelFont() {
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(9);
    return font;
}

QFont NodeLabelFont() {
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(9);
    font.setBold(true);
    return font;
}

LabelMetrics QtLabelMetrics() {
    const QFontMetricsF value(ValueLabelFont());
    const QFontMetricsF node(NodeLabelFont());
    LabelMetrics metrics;
    metrics.ValueWidth = [value](std::string_view text) {
        return static_cast<float>(value.horizontalAdvance(FromUtf8(text))) + 1;
    };
    metrics.ValueHeight = static_cast<float>(value.height());
    // A node name sits in a small frame: two units of room on each side.
    metrics.NodeWidth = [node](std::string_view text) {
        return static_cast<float>(node.horizontalAdvance(FromUtf8(text))) + 5;
    };
    metrics.NodeHeight = static_cast<float>(node.height()) + 1;
    return metrics;
}

std::vector<std::string> ViewLabelTexts(const Workspace& ws, int viewMode, int sigFigs) {
    std::vector<std::string> texts(static_cast<std::size_t>(ws.Circuit.NumElements) + 1);
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        if (ws.Circuit.Elements[slot].Kind != kEmpty) {
            texts[static_cast<std::size_t>(slot)] = ElementLabel(ws, slot, viewMode, sigFigs);
        }
    }
    return texts;
}

DiagramLabels LayOutDiagram(const Workspace& ws, const std::vector<std::string>& values,
                            bool withNodes) {
    return LayOutDiagramLabels(ws.Circuit, values, withNodes, QtLabelMetrics());
}

DiagramLabels LayOutView(const Workspace& ws, int viewMode, int sigFigs) {
    return LayOutDiagramLabels(ws.Circuit, ViewLabelTexts(ws, viewMode, sigFigs), true,
                               QtLabelMetrics(), NodeLabelTexts(ws, viewMode, sigFigs));
}

void PaintDiagramOn(QPainter& painter, const Workspace& ws, const DiagramLabels& labels,
                    DiagramLook look) {
    const Circuit& circuit = ws.Circuit;
    painter.save();
    PaintWires(painter, circuit);
    if (look.Nodes) {
        PaintSupernodeLines(painter, ws.Topology);
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind == kEmpty) {
            continue;
        }
        // A battery inside a supernode is red like the line it sits on.
        const QColor ink =
            look.Nodes && IsBattery(e.Kind) && OnSupernodeChain(ws, e) ? QBColor(12) : Qt::black;
        PaintDevice(painter, e.Kind, QRectF(e.X - 16, e.Y - 16, 32, 32), ink);
    }
    if (look.Nodes) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QBColor(12));
        for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
            const NodeLabel& node = circuit.NodeLabels[slot];
            painter.drawEllipse(QPointF(node.X, node.Y), kNodeDotRadius, kNodeDotRadius);
        }
        painter.setBrush(Qt::NoBrush);
    }
    painter.setFont(ValueLabelFont());
    painter.setPen(Qt::black);
    for (const PlacedLabel& label : labels.Values) {
        PaintLabel(painter, label);
    }
    painter.setFont(NodeLabelFont());
    for (const PlacedLabel& label : labels.Nodes) {
        PaintLabel(painter, label);
        if (look.ClickableNodes && !label.Text.empty()) {
            painter.setPen(QPen(QBColor(8), 1, Qt::DotLine));
            painter.drawRect(ToRect(label.Box).adjusted(0.5, 0.5, -0.5, -0.5));
            painter.setPen(Qt::black);
        }
    }
    painter.restore();
}

} // namespace ampora::ui
