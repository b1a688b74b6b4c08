#include "ui/canvas.h"

#include "editor/editing_tools.h"
#include "editor/editor_state.h"
#include "editor/hit_tests.h"
#include "editor/pointer_events.h"
#include "editor/value_labels.h"
#include "tables/workspace.h"
#include "ui/canvas_accessible.h"
#include "ui/device_pictures.h"
#include "ui/diagram_painter.h"
#include "ui/drawing_picture.h"
#include "ui/drawing_warnings_note.h"
#include "ui/palette.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace ampora::ui {

Canvas::Canvas(Workspace& workspace, EditorState& editor, QWidget* parent)
    : QWidget(parent), workspace_(workspace), editor_(editor) {
    setObjectName(QStringLiteral("canvas"));
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(CanvasAccessibleFactory);
        return true;
    }();
    Q_UNUSED(factoryInstalled);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true); // the stretch pointer shows without a button held
    // Tab reaches the canvas, where the keys draw (step 1) and walk the node names (step 2).
    setFocusPolicy(Qt::StrongFocus);
    horizontal_ = new QScrollBar(Qt::Horizontal, this);
    horizontal_->setObjectName(QStringLiteral("canvasHorizontalScroll"));
    vertical_ = new QScrollBar(Qt::Vertical, this);
    vertical_->setObjectName(QStringLiteral("canvasVerticalScroll"));
    for (QScrollBar* bar : {horizontal_, vertical_}) {
        bar->setFocusPolicy(Qt::NoFocus);
        bar->hide();
        connect(bar, &QScrollBar::valueChanged, this, [this] {
            if (!syncingBars_) {
                SetView(zoom_, QPointF(horizontal_->value(), vertical_->value()) / zoom_);
            }
        });
    }
    // An edit can grow the drawing past what the scroll bars reach.
    connect(this, &Canvas::Edited, this, [this] { SyncScrollBars(); });
    horizontal_->setAccessibleName(QStringLiteral("Scroll the drawing sideways"));
    vertical_->setAccessibleName(QStringLiteral("Scroll the drawing up and down"));
}

void Canvas::SetShowGrid(bool show) {
    showGrid_ = show;
    update();
}

void Canvas::SetCoveredAreas(int top, int right) {
    coveredTop_ = top;
    coveredRight_ = right;
    SyncScrollBars();
}

void Canvas::CenterDrawing() {
    CenterCircuit(workspace_.Circuit, static_cast<float>(width() - coveredRight_),
                  static_cast<float>(coveredTop_), static_cast<float>(height() - coveredTop_));
    update();
}

void Canvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.scale(zoom_, zoom_);
    painter.translate(-origin_);
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
    PaintKeyboardFocus(painter);
}

void Canvas::SetResultsHidden(bool hidden) {
    resultsHidden_ = hidden;
    update();
}

DiagramLabels Canvas::CurrentLabels() const {
    return StepLabels(workspace_, &editor_, resultsHidden_);
}

void Canvas::PaintGrid(QPainter& painter) const {
    // The dots cover the visible part and run past its edge, from the first dot at 16, 16.
    const QRectF seen(ToCanvas(QPointF(0, 0)), ToCanvas(QPointF(width(), height())));
    const int firstI = std::max(1, static_cast<int>(std::floor(seen.left() / 16)));
    const int firstJ = std::max(1, static_cast<int>(std::floor(seen.top() / 16)));
    const int lastI = static_cast<int>(seen.right() / 16 + 5);
    const int lastJ = static_cast<int>(seen.bottom() / 16 + 5);
    QVector<QPointF> dots;
    dots.reserve(std::max(0, lastI - firstI + 1) * std::max(0, lastJ - firstJ + 1));
    for (int i = firstI; i <= lastI; ++i) {
        for (int j = firstJ; j <= lastJ; ++j) {
            dots.append(QPointF(16 * i, 16 * j));
        }
    }
    painter.save();
    QPen dot(Qt::black, 1);
    dot.setCosmetic(true); // one pixel at every zoom
    painter.setPen(dot);
    painter.drawPoints(dots.constData(), static_cast<int>(dots.size()));
    painter.restore();
}

void Canvas::PaintDrag(QPainter& painter) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    QPen band(QBColor(8), 1, Qt::SolidLine);
    band.setCosmetic(true);
    painter.setPen(band);
    if (editor_.DrawingWire) {
        painter.drawLine(QPointF(editor_.StartX, editor_.StartY),
                         QPointF(editor_.EndX, editor_.EndY));
    }
    if (IsStretching(editor_)) {
        float fixedX = 0;
        float fixedY = 0;
        FixedStretchEnd(workspace_.Circuit, editor_, fixedX, fixedY);
        painter.drawLine(QPointF(fixedX, fixedY), QPointF(editor_.EndX, editor_.EndY));
    }
    if (editor_.DraggedElement != 0) {
        const Element& e = workspace_.Circuit.Elements[editor_.DraggedElement];
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
    keyboardActive_ = false;
    const QPointF at = ToCanvas(event->position());
    const auto x = static_cast<float>(at.x());
    const auto y = static_cast<float>(at.y());
    if (workspace_.Step == kStepName) {
        const int node = NodeLabelAt(CurrentLabels(), x, y);
        if (node != 0) {
            emit NodeLabelClicked(node);
        }
        return;
    }
    if (workspace_.Step != kStepEdit || prompts_ == nullptr) {
        return;
    }
    PointerPress(workspace_.Circuit, editor_, *prompts_, x, y);
    dragPointer_ = at;
    UpdateCursor();
    update();
    emit Edited();
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = ToCanvas(event->position());
    const auto x = static_cast<float>(at.x());
    const auto y = static_cast<float>(at.y());
    if (workspace_.Step == kStepName) {
        // A node's name is a button in step 2.
        if (NodeLabelAt(CurrentLabels(), x, y) != 0) {
            setCursor(Qt::PointingHandCursor);
        } else {
            unsetCursor();
        }
        return;
    }
    if (workspace_.Step != kStepEdit) {
        return;
    }
    const bool dragging = IsDragging(editor_);
    PointerMove(workspace_.Circuit, editor_, x, y);
    dragPointer_ = at;
    if (dragging) {
        update();
    }
    UpdateCursor();
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || workspace_.Step != kStepEdit) {
        return;
    }
    const QPointF at = ToCanvas(event->position());
    if (!PointerRelease(workspace_.Circuit, editor_, static_cast<float>(at.x()),
                        static_cast<float>(at.y()))) {
        return;
    }
    UpdateCursor();
    update();
    emit Edited();
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
