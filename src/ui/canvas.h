#pragma once
// The drawing area of the main window: paints the grid, the wires, the device pictures and
// their value labels, and turns mouse events and keys into the editing tools in step 1. It
// shows the drawing at a zoom and scrolled; the tools always work in canvas units.

#include "editor/diagram_labels.h"
#include "editor/keyboard_cursor.h"

#include <QWidget>

class QScrollBar;

namespace ampora {
struct Workspace;
struct EditorState;
struct Prompts;
} // namespace ampora

namespace ampora::ui {

class Canvas : public QWidget {
    Q_OBJECT

  public:
    Canvas(Workspace& workspace, EditorState& editor, QWidget* parent = nullptr);

    void SetPrompts(Prompts* prompts) { prompts_ = prompts; }
    void SetShowGrid(bool show);
    bool ShowGrid() const { return showGrid_; }
    // While a student practises, step 3 shows the devices' values and no result.
    void SetResultsHidden(bool hidden);
    // The strip under the toolbar and the step panel at the right hide part of the canvas;
    // "Center the circuit" centres the drawing in what is left.
    void SetCoveredAreas(int top, int right);
    void CenterDrawing();
    // The labels as they are drawn now: the value labels of the step and view, and from
    // step 2 on the node names.
    DiagramLabels CurrentLabels() const;

    // Zoom and scrolling change only what is shown.
    qreal Zoom() const { return zoom_; }
    void ZoomIn();
    void ZoomOut();
    // The whole drawing in the visible part, as large as fits (at most twice its size).
    void FitDrawing();
    // After a file is read: the drawing at its own size from the top left, or fitted when
    // it is larger than the visible part.
    void ShowWholeDrawing();
    // Canvas units to this widget's pixels and back.
    QPointF ToWidget(QPointF canvasPoint) const;
    QPointF ToCanvas(QPointF widgetPoint) const;

    const Workspace& workspace() const { return workspace_; }
    const KeyboardCursor& Cursor() const { return cursor_; }
    // What Space would do at the cursor now.
    QString KeyHintText() const;
    // Step 2: the node whose name Tab has reached, 0 for none.
    int FocusedNode() const { return focusedNode_; }

  signals:
    // A tool may have changed the circuit or the editor state (the Undo Erase button and the
    // undo history follow it).
    void Edited();
    // In step 2 the user clicked the name label of node `slot` (or pressed Enter on it).
    void NodeLabelClicked(int slot);
    // A letter key chose toolbar button `button` (1..8).
    void ToolKeyPressed(int button);
    // What the next key press will do, for the status bar.
    void KeyHint(const QString& text);
    // The view moved or zoomed.
    void ViewChanged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    void PaintGrid(QPainter& painter) const;
    void PaintDrag(QPainter& painter) const;
    void PaintKeyboardFocus(QPainter& painter) const;
    void UpdateCursor();

    // The visible part, in widget pixels: below the toolbar, left of the step panel.
    QRect FreeArea() const;
    // Where the view's top-left may go, in canvas units, so that the drawing and the
    // canvas's own first screenful can be scrolled to.
    QRectF OriginRange() const;
    CursorBounds KeyboardBounds() const;
    void SetView(qreal zoom, QPointF origin);
    void ZoomAround(qreal zoom, QPointF widgetPoint);
    void SyncScrollBars();
    void EnsureVisible(QPointF canvasPoint);
    // Step 2: moves the Tab focus to the next or previous node name; false past the ends.
    bool StepNodeFocus(bool next);
    void AfterKey();
    void AnnounceFocus();

    Workspace& workspace_;
    EditorState& editor_;
    Prompts* prompts_ = nullptr;
    bool showGrid_ = true;
    bool resultsHidden_ = false;
    int coveredTop_ = 0;
    int coveredRight_ = 0;
    QPointF dragPointer_; // canvas units: where a dragged device picture follows the pointer
    qreal zoom_ = 1;
    QPointF origin_; // the canvas point at the widget's top-left corner
    QScrollBar* horizontal_ = nullptr;
    QScrollBar* vertical_ = nullptr;
    bool syncingBars_ = false;
    KeyboardCursor cursor_;
    bool keyboardActive_ = false; // the cursor is drawn once a key has been used
    int focusedNode_ = 0;
};

} // namespace ampora::ui
