#pragma once
// The drawing area of the main window: paints the grid, the wires, the device pictures and
// their value labels, and turns mouse events into the editing tools in step 1.

#include "editor/diagram_labels.h"

#include <QWidget>

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

  signals:
    // A tool changed the circuit or the editor state (the Undo Erase button follows it).
    void Edited();
    // In step 2 the user clicked the name label of node `slot`.
    void NodeLabelClicked(int slot);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void PaintGrid(QPainter& painter) const;
    void PaintDrag(QPainter& painter) const;
    void UpdateCursor();
    void CancelDrag();

    Workspace& workspace_;
    EditorState& editor_;
    Prompts* prompts_ = nullptr;
    bool showGrid_ = true;
    bool resultsHidden_ = false;
    int coveredTop_ = 0;
    int coveredRight_ = 0;
    QPointF dragPointer_; // where a dragged device picture follows the pointer
};

} // namespace ampora::ui
