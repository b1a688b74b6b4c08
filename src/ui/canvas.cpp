#include "ui/canvas.h"

#include "editor/editing_tools.h"
#include "editor/editor_state.h"
#include "editor/hit_tests.h"
#include "editor/value_labels.h"
#include "tables/workspace.h"
#include "ui/device_pictures.h"
#include "ui/diagram_painter.h"
#include "ui/drawing_warnings_note.h"
#include "ui/palette.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace ampora::ui {

Canvas::Canvas(Workspace& workspace, EditorState& editor, QWidget* parent)
    : QWidget(parent), workspace_(workspace), editor_(editor) {
    setObjectName(QStringLiteral("canvas"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true); // the stretch pointer shows without a button held
    setFocusPolicy(Qt::ClickFocus);
}

void Canvas::SetShowGrid(bool show) {
    showGrid_ = show;
    update();
}

void Canvas::SetCoveredAreas(int top, int right) {
    coveredTop_ = top;
    coveredRight_ = right;
}

void Canvas::CenterDrawing() {
    CenterCircuit(workspace_.circuit, static_cast<float>(width() - coveredRight_),
                  static_cast<float>(coveredTop_), static_cast<float>(height() - coveredTop_));
    update();
    emit Edited();
}

void Canvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (workspace_.Step == kStepEdit && showGrid_) {
        PaintGrid(painter);
    }
    const int step = workspace_.Step;
    if (step == 2) {
        // Under the diagram, so that no label's text is crossed by a ring.
        PaintWarnedDevices(painter, workspace_);
    }
    PaintDiagramOn(painter, workspace_, CurrentLabels(), DiagramLook{step != 1, step == 2});
    PaintDrag(painter);
}

DiagramLabels Canvas::CurrentLabels() const {
    const Workspace& ws = workspace_;
    if (ws.Step == kStepEdit) {
        // While editing, a device shows its value as it was typed.
        std::vector<std::string> texts(static_cast<std::size_t>(ws.circuit.NumElements) + 1);
        for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
            const Element& e = ws.circuit.Elements[slot];
            if (e.Kind != kEmpty) {
                texts[static_cast<std::size_t>(slot)] = ValueLabelText(e, editor_.ValueText[slot]);
            }
        }
        return LayOutDiagram(ws, texts, false);
    }
    const int view = ws.Step == kStepResults ? ws.ViewMode : 0;
    return LayOutView(ws, view, ws.preferences.SigFigs);
}

void Canvas::PaintGrid(QPainter& painter) const {
    // The dots run past the visible edge so a canvas enlarged later is still covered.
    const int across = static_cast<int>(width() / 16.0 + 5);
    const int down = static_cast<int>(height() / 16.0 + 5);
    QVector<QPointF> dots;
    dots.reserve(across * down);
    for (int i = 1; i <= across; ++i) {
        for (int j = 1; j <= down; ++j) {
            dots.append(QPointF(16 * i, 16 * j));
        }
    }
    painter.save();
    painter.setPen(QPen(Qt::black, 1));
    painter.drawPoints(dots.constData(), static_cast<int>(dots.size()));
    painter.restore();
}

void Canvas::PaintDrag(QPainter& painter) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(QBColor(8), 1, Qt::SolidLine));
    if (editor_.DrawingWire) {
        painter.drawLine(QPointF(editor_.StartX, editor_.StartY),
                         QPointF(editor_.EndX, editor_.EndY));
    }
    if (IsStretching(editor_)) {
        float fixedX = 0;
        float fixedY = 0;
        FixedStretchEnd(workspace_.circuit, editor_, fixedX, fixedY);
        painter.drawLine(QPointF(fixedX, fixedY), QPointF(editor_.EndX, editor_.EndY));
    }
    if (editor_.DraggedElement != 0) {
        const Element& e = workspace_.circuit.Elements[editor_.DraggedElement];
        const QRectF box(dragPointer_.x() - editor_.GrabX, dragPointer_.y() - editor_.GrabY, 32,
                         32);
        painter.setOpacity(0.75);
        PaintDevice(painter, e.Kind, box);
        painter.setOpacity(1);
        painter.setPen(QPen(QBColor(8), 1, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(box);
    }
    painter.restore();
}

void Canvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (workspace_.Step == kStepName) {
        const int node = NodeLabelAt(CurrentLabels(), static_cast<float>(event->position().x()),
                                     static_cast<float>(event->position().y()));
        if (node != 0) {
            emit NodeLabelClicked(node);
        }
        return;
    }
    if (workspace_.Step != kStepEdit || prompts_ == nullptr) {
        return;
    }
    Circuit& circuit = workspace_.circuit;
    const auto x = static_cast<float>(event->position().x());
    const auto y = static_cast<float>(event->position().y());
    // A device picture lies over the wire it sits on and takes the click.
    const int device = ElementAt(circuit, x, y);
    if (device != 0) {
        switch (editor_.CurrentTool) {
        case kNumberTool:
            RenumberDevice(circuit, editor_, *prompts_, device);
            break;
        case kMoveStretchTool:
            GrabDevice(circuit, editor_, device, x, y);
            dragPointer_ = event->position();
            break;
        case kEraseTool:
            EraseDevice(circuit, editor_, device);
            break;
        default:
            break;
        }
    } else {
        switch (editor_.CurrentTool) {
        case kWireTool:
            BeginWire(editor_, x, y);
            break;
        case kBatteryTool:
        case kResistorTool:
        case kSourceTool:
            PlaceDevice(circuit, editor_, *prompts_, editor_.CurrentTool, x, y);
            break;
        case kMoveStretchTool:
            BeginStretch(circuit, editor_, x, y);
            break;
        case kEraseTool:
            EraseWireAt(circuit, editor_, x, y);
            break;
        default:
            break;
        }
    }
    UpdateCursor();
    update();
    emit Edited();
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
    if (workspace_.Step == kStepName) {
        // A node's name is a button in step 2.
        const bool overName =
            NodeLabelAt(CurrentLabels(), static_cast<float>(event->position().x()),
                        static_cast<float>(event->position().y())) != 0;
        if (overName) {
            setCursor(Qt::PointingHandCursor);
        } else {
            unsetCursor();
        }
        return;
    }
    if (workspace_.Step != kStepEdit) {
        return;
    }
    const auto x = static_cast<float>(event->position().x());
    const auto y = static_cast<float>(event->position().y());
    if (editor_.DrawingWire) {
        DragWire(editor_, x, y);
        update();
    } else if (IsStretching(editor_)) {
        DragStretch(workspace_.circuit, editor_, x, y);
        update();
    } else if (editor_.DraggedElement != 0) {
        dragPointer_ = event->position();
        update();
    } else if (editor_.CurrentTool == kMoveStretchTool) {
        HoverStretch(workspace_.circuit, editor_, x, y);
    }
    UpdateCursor();
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || workspace_.Step != kStepEdit) {
        return;
    }
    const auto x = static_cast<float>(event->position().x());
    const auto y = static_cast<float>(event->position().y());
    Circuit& circuit = workspace_.circuit;
    if (editor_.DrawingWire) {
        FinishWire(circuit, editor_, x, y);
    } else if (IsStretching(editor_)) {
        FinishStretch(circuit, editor_, x, y);
    } else if (editor_.DraggedElement != 0) {
        DropDevice(circuit, editor_, x, y);
    } else {
        return;
    }
    UpdateCursor();
    update();
    emit Edited();
}

void Canvas::keyPressEvent(QKeyEvent* event) {
    // Escape abandons a drag half-way; nothing else on the keyboard edits the drawing.
    if (event->key() == Qt::Key_Escape) {
        CancelDrag();
        return;
    }
    QWidget::keyPressEvent(event);
}

void Canvas::CancelDrag() {
    editor_.DrawingWire = false;
    editor_.DraggedElement = 0;
    if (IsStretching(editor_)) {
        editor_.DragState = 0;
    }
    UpdateCursor();
    update();
}

void Canvas::UpdateCursor() {
    if (editor_.DraggedElement != 0) {
        setCursor(Qt::ClosedHandCursor);
    } else if (editor_.CurrentTool == kMoveStretchTool && editor_.DragState != 0) {
        // Over a wire end, or dragging one: the end can be stretched.
        setCursor(editor_.DragState == 3 || editor_.DragState >= 6 ? Qt::SizeVerCursor
                                                                   : Qt::SizeHorCursor);
    } else if (editor_.CurrentTool == kWireTool) {
        setCursor(Qt::CrossCursor);
    } else {
        unsetCursor();
    }
}

} // namespace ampora::ui
