#include "ui/circuit_paint.h"

#include "report/circuit_extents.h"
#include "tables/workspace.h"
#include "ui/diagram_painter.h"

#include <QPainter>
#include <cmath>

namespace ampora::ui {

void DiagramExtents(const Workspace& ws, const DiagramLabels& labels, float& top, float& bottom,
                    float& left, float& right) {
    std::vector<LabelBox> boxes;
    for (const auto* placed : {&labels.Values, &labels.Nodes}) {
        for (const PlacedLabel& label : *placed) {
            if (!label.Text.empty()) {
                boxes.push_back(label.Box);
            }
        }
    }
    GetCircuitExtents(ws.Circuit, boxes, top, bottom, left, right);
}

QImage DiagramImage(const Workspace& ws, const DiagramLabels& labels, DiagramLook look,
                    qreal scale) {
    float top = 0, bottom = 0, left = 0, right = 0;
    DiagramExtents(ws, labels, top, bottom, left, right);
    const qreal width = right - left + 2;
    const qreal height = bottom - top + 2;
    if (width <= 0 || height <= 0) {
        return {};
    }
    QImage image(static_cast<int>(std::ceil(width * scale)),
                 static_cast<int>(std::ceil(height * scale)), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.translate(-left, -top);
    PaintDiagramOn(painter, ws, labels, look);
    return image;
}

QImage CircuitPaint(const Workspace& ws, qreal scale) {
    return DiagramImage(ws, LayOutView(ws, ws.ViewMode, ws.Preferences.SigFigs),
                        DiagramLook{true, false}, scale);
}

} // namespace ampora::ui
