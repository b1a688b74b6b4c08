// The canvas on the keyboard: in step 1 the letters choose the tools and a grid cursor
// draws as the mouse does (the rules are in editor/keyboard_cursor); in step 2 Tab walks
// the node names and Enter opens the one reached.

#include "editor/editor_state.h"
#include "editor/pointer_events.h"
#include "tables/workspace.h"
#include "ui/canvas.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

namespace ampora::ui {

namespace {

bool ArrowKey(int key, CanvasKey& out) {
    switch (key) {
    case Qt::Key_Left:
        out = CanvasKey::kLeft;
        return true;
    case Qt::Key_Right:
        out = CanvasKey::kRight;
        return true;
    case Qt::Key_Up:
        out = CanvasKey::kUp;
        return true;
    case Qt::Key_Down:
        out = CanvasKey::kDown;
        return true;
    default:
        return false;
    }
}

bool ActKey(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

void Canvas::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const Qt::KeyboardModifiers mods = event->modifiers() & ~Qt::KeypadModifier;
    if (workspace_.Step == kStepName) {
        if (ActKey(key) && focusedNode_ != 0) {
            emit NodeLabelClicked(focusedNode_);
            return;
        }
        QWidget::keyPressEvent(event);
        return;
    }
    if (workspace_.Step != kStepEdit || prompts_ == nullptr) {
        QWidget::keyPressEvent(event);
        return;
    }
    // Letters alone choose tools; with Ctrl or Alt they belong to the menus.
    if ((mods & ~Qt::ShiftModifier) == 0 && !event->text().isEmpty()) {
        const int button = ToolButtonForLetter(event->text().at(0).toLatin1());
        if (button != 0) {
            keyboardActive_ = true;
            emit ToolKeyPressed(button);
            AfterKey();
            return;
        }
    }
    CanvasKey canvasKey = CanvasKey::kAct;
    const bool arrow = ArrowKey(key, canvasKey);
    if (!arrow && !ActKey(key) && key != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (key == Qt::Key_Escape) {
        canvasKey = CanvasKey::kCancel;
    }
    const bool wasActive = keyboardActive_;
    keyboardActive_ = true;
    const KeyEffect effect = ActOnKey(workspace_.Circuit, editor_, *prompts_, cursor_,
                                      KeyboardBounds(), canvasKey, (mods & Qt::ShiftModifier) != 0);
    if (!effect.handled) {
        keyboardActive_ = wasActive;
        event->ignore(); // Escape with nothing to abandon goes on to the window
        return;
    }
    dragPointer_ = QPointF(cursor_.X, cursor_.Y);
    EnsureVisible(dragPointer_);
    if (effect.edited) {
        UpdateCursor();
        emit Edited();
    }
    AfterKey();
}

QString Canvas::KeyHintText() const {
    return QString::fromStdString(KeyboardHint(workspace_.Circuit, editor_, cursor_)).trimmed();
}

void Canvas::AfterKey() {
    update();
    emit KeyHint(QString::fromStdString(KeyboardHint(workspace_.Circuit, editor_, cursor_)));
    AnnounceFocus();
}

void Canvas::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (workspace_.Step == kStepName && focusedNode_ == 0 &&
        (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)) {
        StepNodeFocus(event->reason() == Qt::TabFocusReason);
    }
    // Arriving by Tab shows the cursor and what Space would do; the window coming to the
    // front changes nothing, so the start-up hint stays.
    if (workspace_.Step == kStepEdit &&
        (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)) {
        keyboardActive_ = true;
        emit KeyHint(QString::fromStdString(KeyboardHint(workspace_.Circuit, editor_, cursor_)));
    }
    update();
}

void Canvas::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        focusedNode_ = 0;
    }
    update();
}

bool Canvas::focusNextPrevChild(bool next) {
    if (hasFocus() && workspace_.Step == kStepName && StepNodeFocus(next)) {
        return true;
    }
    focusedNode_ = 0;
    return QWidget::focusNextPrevChild(next);
}

bool Canvas::StepNodeFocus(bool next) {
    const DiagramLabels labels = CurrentLabels();
    const int last = static_cast<int>(labels.Nodes.size()) - 1;
    // From no node, Tab starts at the first and Shift+Tab at the last.
    int slot = focusedNode_ != 0 ? focusedNode_ + (next ? 1 : -1) : (next ? 1 : last);
    for (; slot >= 1 && slot <= last; slot += next ? 1 : -1) {
        const PlacedLabel& label = labels.Nodes[static_cast<std::size_t>(slot)];
        if (!label.Text.empty()) {
            focusedNode_ = slot;
            EnsureVisible(QPointF(label.Box.Left, label.Box.Top));
            update();
            AnnounceFocus();
            return true;
        }
    }
    return false;
}

void Canvas::PaintKeyboardFocus(QPainter& painter) const {
    if (!hasFocus()) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    QPen pen(QColor(0xC0, 0x40, 0x00), 2);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    if (workspace_.Step == kStepEdit && keyboardActive_) {
        // A cross hair in a square: where Space acts.
        const QPointF at(cursor_.X, cursor_.Y);
        const qreal half = 6;
        painter.drawRect(QRectF(at.x() - half, at.y() - half, 2 * half, 2 * half));
        painter.drawLine(at - QPointF(half + 4, 0), at - QPointF(2, 0));
        painter.drawLine(at + QPointF(2, 0), at + QPointF(half + 4, 0));
        painter.drawLine(at - QPointF(0, half + 4), at - QPointF(0, 2));
        painter.drawLine(at + QPointF(0, 2), at + QPointF(0, half + 4));
    } else if (workspace_.Step == kStepName && focusedNode_ != 0) {
        const DiagramLabels labels = CurrentLabels();
        if (static_cast<std::size_t>(focusedNode_) < labels.Nodes.size()) {
            const LabelBox& box = labels.Nodes[static_cast<std::size_t>(focusedNode_)].Box;
            painter.drawRect(QRectF(box.Left - 3, box.Top - 3, box.Width + 6, box.Height + 6));
        }
    }
    painter.restore();
}

} // namespace ampora::ui
