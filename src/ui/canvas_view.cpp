// The canvas's zoom and scrolling: which part of the drawing the widget shows, and at
// what size. Nothing here changes the circuit.

#include "tables/workspace.h"
#include "ui/canvas.h"

#include <QResizeEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace ampora::ui {

namespace {

constexpr qreal kMinZoom = 0.25;
constexpr qreal kMaxZoom = 4;
constexpr qreal kZoomStep = 1.25;
// Room kept around the drawing when scrolling and fitting, in canvas units.
constexpr qreal kMargin = 32;

QRectF ToRect(const LabelBox& box) {
    return QRectF(box.Left, box.Top, box.Width, box.Height);
}

} // namespace

QRect Canvas::FreeArea() const {
    const int bar = horizontal_->isVisible() ? horizontal_->sizeHint().height() : 0;
    const int side = vertical_->isVisible() ? vertical_->sizeHint().width() : 0;
    return QRect(0, coveredTop_, std::max(1, width() - coveredRight_ - side),
                 std::max(1, height() - coveredTop_ - bar));
}

QPointF Canvas::ToWidget(QPointF canvasPoint) const {
    return (canvasPoint - origin_) * zoom_;
}

QPointF Canvas::ToCanvas(QPointF widgetPoint) const {
    return widgetPoint / zoom_ + origin_;
}

QRectF Canvas::OriginRange() const {
    const QRect free = FreeArea();
    // The canvas's own first screenful, as it is at zoom 1, and the drawing with a margin.
    QRectF content(0, 0, free.right() + 1, free.bottom() + 1);
    const QRectF drawing = ToRect(DiagramExtent(workspace_.Circuit, CurrentLabels()));
    if (drawing.width() > 0 || drawing.height() > 0) {
        // Room to draw on beyond the right and bottom; at the top and left only enough to
        // see the drawing whole, past the toolbar.
        content |= drawing.adjusted(0, -coveredTop_ / zoom_, kMargin, kMargin);
    }
    const qreal right = content.right() - (free.right() + 1) / zoom_;
    const qreal bottom = content.bottom() - (free.bottom() + 1) / zoom_;
    // Where the view is now stays reachable, so scrolling never jumps on its own. (The
    // corners are taken one by one: a rectangle of no size counts for nothing in a union.)
    return QRectF(
        QPointF(std::min(content.left(), origin_.x()), std::min(content.top(), origin_.y())),
        QPointF(std::max({content.left(), right, origin_.x()}),
                std::max({content.top(), bottom, origin_.y()})));
}

CursorBounds Canvas::KeyboardBounds() const {
    const QRectF range = OriginRange();
    const QRect free = FreeArea();
    return CursorBounds{static_cast<float>(range.left()),
                        static_cast<float>(range.top() + (coveredTop_ + 8) / zoom_),
                        static_cast<float>(range.right() + (free.right() - 8) / zoom_),
                        static_cast<float>(range.bottom() + (free.bottom() - 8) / zoom_)};
}

void Canvas::SetView(qreal zoom, QPointF origin) {
    const qreal z = std::clamp(zoom, kMinZoom, kMaxZoom);
    if (z == zoom_ && origin == origin_) {
        return;
    }
    zoom_ = z;
    origin_ = origin;
    SyncScrollBars();
    update();
    emit ViewChanged();
}

void Canvas::ZoomAround(qreal zoom, QPointF widgetPoint) {
    const qreal z = std::clamp(zoom, kMinZoom, kMaxZoom);
    // The canvas point under widgetPoint stays there.
    const QPointF fixed = ToCanvas(widgetPoint);
    SetView(z, fixed - widgetPoint / z);
}

void Canvas::ZoomIn() {
    ZoomAround(zoom_ * kZoomStep, QRectF(FreeArea()).center());
}

void Canvas::ZoomOut() {
    ZoomAround(zoom_ / kZoomStep, QRectF(FreeArea()).center());
}

void Canvas::FitDrawing() {
    const QRectF drawing = ToRect(DiagramExtent(workspace_.Circuit, CurrentLabels()));
    if (drawing.width() <= 0 && drawing.height() <= 0) {
        SetView(1, QPointF(0, 0));
        return;
    }
    const QRectF wanted = drawing.adjusted(-kMargin / 2, -kMargin / 2, kMargin / 2, kMargin / 2);
    // Room is left for both scroll bars, which a fitted view may bring up.
    QRect free = FreeArea();
    free.setRight(free.right() - (vertical_->isVisible() ? 0 : vertical_->sizeHint().width()));
    free.setBottom(free.bottom() -
                   (horizontal_->isVisible() ? 0 : horizontal_->sizeHint().height()));
    const qreal z = std::clamp(
        std::min(free.width() / wanted.width(), free.height() / wanted.height()), kMinZoom, 2.0);
    // The drawing's middle in the middle of the free part.
    const QPointF middle = QRectF(free).center();
    SetView(z, wanted.center() - middle / z);
}

void Canvas::ShowWholeDrawing() {
    SetView(1, QPointF(0, 0));
    const QRectF drawing = ToRect(DiagramExtent(workspace_.Circuit, CurrentLabels()));
    const QRect free = FreeArea();
    const QRectF seen(ToCanvas(free.topLeft()), ToCanvas(free.bottomRight()));
    if (!seen.contains(drawing)) {
        FitDrawing();
    }
}

void Canvas::SyncScrollBars() {
    if (horizontal_ == nullptr) {
        return;
    }
    syncingBars_ = true;
    // Showing a bar narrows the free part, which can call for the other bar: twice settles.
    for (int pass = 0; pass < 2; ++pass) {
        const QRectF range = OriginRange();
        const QRect free = FreeArea();
        const auto pixels = [this](qreal units) {
            return static_cast<int>(std::lround(units * zoom_));
        };
        horizontal_->setRange(pixels(range.left()), pixels(range.right()));
        horizontal_->setPageStep(free.width());
        horizontal_->setSingleStep(16);
        horizontal_->setValue(pixels(origin_.x()));
        vertical_->setRange(pixels(range.top()), pixels(range.bottom()));
        vertical_->setPageStep(free.height());
        vertical_->setSingleStep(16);
        vertical_->setValue(pixels(origin_.y()));
        horizontal_->setVisible(horizontal_->maximum() > horizontal_->minimum());
        vertical_->setVisible(vertical_->maximum() > vertical_->minimum());
    }
    const QRect free = FreeArea();
    const int barHeight = horizontal_->sizeHint().height();
    const int barWidth = vertical_->sizeHint().width();
    horizontal_->setGeometry(0, free.bottom() + 1, free.width(), barHeight);
    vertical_->setGeometry(free.right() + 1, coveredTop_, barWidth, free.height());
    syncingBars_ = false;
}

void Canvas::EnsureVisible(QPointF canvasPoint) {
    constexpr qreal kRoom = 24; // pixels kept between the point and the edge
    const QRect free = FreeArea();
    const QPointF at = ToWidget(canvasPoint);
    QPointF origin = origin_;
    if (at.x() < free.left() + kRoom) {
        origin.setX(canvasPoint.x() - (free.left() + kRoom) / zoom_);
    } else if (at.x() > free.right() - kRoom) {
        origin.setX(canvasPoint.x() - (free.right() - kRoom) / zoom_);
    }
    if (at.y() < free.top() + kRoom) {
        origin.setY(canvasPoint.y() - (free.top() + kRoom) / zoom_);
    } else if (at.y() > free.bottom() - kRoom) {
        origin.setY(canvasPoint.y() - (free.bottom() - kRoom) / zoom_);
    }
    SetView(zoom_, origin);
}

void Canvas::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    if (event->modifiers() & Qt::ControlModifier) {
        if (turn.y() != 0) {
            ZoomAround(turn.y() > 0 ? zoom_ * kZoomStep : zoom_ / kZoomStep, event->position());
        }
        event->accept();
        return;
    }
    // Shift turns the wheel sideways, as in most programs.
    const bool sideways = (event->modifiers() & Qt::ShiftModifier) || turn.x() != 0;
    QScrollBar* bar = sideways ? horizontal_ : vertical_;
    const int amount = sideways && turn.x() != 0 ? turn.x() : turn.y();
    if (bar->isVisible() && amount != 0) {
        bar->setValue(bar->value() - amount * 3 * bar->singleStep() / 120);
    }
    event->accept();
}

void Canvas::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    SyncScrollBars();
}

} // namespace ampora::ui
