#pragma once
// The Edit menu (Undo, Redo, Copy drawing) and File > Export drawing...: the window's thin
// side of the undo history and of the drawing as a picture. The window tells it when the
// drawing changed and what the change was; it keeps the menu's texts in step.

#include "editor/edit_history.h"

#include <QObject>
#include <QString>
#include <functional>
#include <string>

class QAction;
class QMenu;
class QWidget;

namespace ampora {
struct Workspace;
struct EditorState;
struct Prompts;
} // namespace ampora

namespace ampora::ui {

class Canvas;

class EditCommands : public QObject {
    Q_OBJECT

  public:
    EditCommands(Workspace& workspace, EditorState& editor, Canvas& canvas, Prompts& prompts,
                 QWidget* parent);

    // "&Edit": "&Undo", "&Redo", and "Copy &drawing", owned by `parent`.
    QMenu* BuildEditMenu(QWidget* parent);
    // "Export drawing..." for the File menu.
    QAction* ExportAction() const { return mnuExportDrawing_; }
    QAction* UndoAction() const { return mnuUndo_; }
    QAction* RedoAction() const { return mnuRedo_; }
    QAction* CopyDrawingAction() const { return mnuCopyDrawing_; }

    // New and Open: an empty history at the drawing as it now is.
    void Restart();
    // A canvas tool may have changed the drawing: a step named after the tool, if it did.
    void RecordTool(int tool);
    // A named command may have changed the drawing ("Undo Erase", "Center the circuit",
    // "Rename node", "AutoName", "Clear Names").
    void Record(const std::string& name);
    // "Next >" cleaned the wires up: the present step takes them as they are now.
    void TakeCleanedDrawing();
    // The texts and the enabled state of the items, for the drawing and step as they are.
    void Sync();

    bool Undo();
    bool Redo();
    // The drawing on the clipboard as an image and as SVG; false for an empty drawing.
    bool CopyDrawing();
    // SVG or PNG as the name's ending says; false (after a message) when it cannot be.
    bool ExportDrawing(const QString& path);
    // Where Export drawing... asks for the file; a test answers instead of the dialog. An
    // empty answer cancels.
    void SetExportPathAsker(std::function<QString()> ask) { askExportPath_ = std::move(ask); }

    const EditHistory& History() const { return history_; }

  signals:
    // Undo or Redo put another drawing into the tables: repaint, and bring the toolbar along.
    void DrawingRestored();

  private:
    void ExportClicked();

    Workspace& workspace_;
    EditorState& editor_;
    Canvas& canvas_;
    Prompts& prompts_;
    EditHistory history_;
    QAction* mnuUndo_ = nullptr;
    QAction* mnuRedo_ = nullptr;
    QAction* mnuCopyDrawing_ = nullptr;
    QAction* mnuExportDrawing_ = nullptr;
    std::function<QString()> askExportPath_;
};

} // namespace ampora::ui
