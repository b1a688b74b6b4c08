#include "ui/edit_commands.h"

#include "document/circuit_edit.h"
#include "document/safe_file_write.h"
#include "tables/prompts.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/drawing_picture.h"

#include <QAction>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>

namespace ampora::ui {

namespace {

// A step's name shown in its menu item; an "&" in it is no access key.
QString WithStep(const char* item, const std::string& name) {
    QString text = QString::fromLatin1(item);
    if (!name.empty()) {
        text += QLatin1Char(' ') +
                QString::fromStdString(name).replace(QLatin1Char('&'), QStringLiteral("&&"));
    }
    return text;
}

} // namespace

EditCommands::EditCommands(Workspace& workspace, EditorState& editor, Canvas& canvas,
                           Prompts& prompts, QWidget* parent)
    : QObject(parent), workspace_(workspace), editor_(editor), canvas_(canvas), prompts_(prompts) {
    mnuUndo_ = new QAction(QStringLiteral("&Undo"), parent);
    mnuUndo_->setObjectName(QStringLiteral("mnuUndo"));
    mnuUndo_->setShortcut(QKeySequence(QStringLiteral("Ctrl+Z")));
    connect(mnuUndo_, &QAction::triggered, this, &EditCommands::Undo);
    mnuRedo_ = new QAction(QStringLiteral("&Redo"), parent);
    mnuRedo_->setObjectName(QStringLiteral("mnuRedo"));
    mnuRedo_->setShortcuts(
        {QKeySequence(QStringLiteral("Ctrl+Shift+Z")), QKeySequence(QStringLiteral("Ctrl+Y"))});
    connect(mnuRedo_, &QAction::triggered, this, &EditCommands::Redo);
    mnuCopyDrawing_ = new QAction(QStringLiteral("Copy &drawing"), parent);
    mnuCopyDrawing_->setObjectName(QStringLiteral("mnuCopyDrawing"));
    connect(mnuCopyDrawing_, &QAction::triggered, this, &EditCommands::CopyDrawing);
    mnuExportDrawing_ = new QAction(QStringLiteral("Export drawing..."), parent);
    mnuExportDrawing_->setObjectName(QStringLiteral("mnuExportDrawing"));
    connect(mnuExportDrawing_, &QAction::triggered, this, &EditCommands::ExportClicked);
    askExportPath_ = [parent] {
        return QFileDialog::getSaveFileName(
            parent, QStringLiteral("Export the drawing"), QString(),
            QStringLiteral("SVG picture (*.svg);;PNG picture, 300 dpi (*.png)"));
    };
    Restart();
}

QMenu* EditCommands::BuildEditMenu(QWidget* parent) {
    auto* menu = new QMenu(QStringLiteral("&Edit"), parent);
    menu->setObjectName(QStringLiteral("mnuEdit"));
    menu->addAction(mnuUndo_);
    menu->addAction(mnuRedo_);
    menu->addSeparator();
    menu->addAction(mnuCopyDrawing_);
    // The items say what they would do now, whatever changed since they were last shown.
    connect(menu, &QMenu::aboutToShow, this, &EditCommands::Sync);
    return menu;
}

void EditCommands::Restart() {
    StartHistory(history_, workspace_.Circuit, editor_);
    Sync();
}

void EditCommands::RecordTool(int tool) {
    RecordToolStep(history_, tool, workspace_.Circuit, editor_);
    Sync();
}

void EditCommands::Record(const std::string& name) {
    RecordStep(history_, name, workspace_.Circuit, editor_);
    Sync();
}

void EditCommands::TakeCleanedDrawing() {
    ReplacePresent(history_, workspace_.Circuit, editor_);
    Sync();
}

void EditCommands::Sync() {
    const int step = workspace_.Step;
    const bool undo = CanUndo(history_, step);
    const bool redo = CanRedo(history_, step);
    mnuUndo_->setEnabled(undo);
    mnuUndo_->setText(WithStep("&Undo", undo ? UndoName(history_) : std::string()));
    mnuRedo_->setEnabled(redo);
    mnuRedo_->setText(WithStep("&Redo", redo ? RedoName(history_) : std::string()));
    const bool drawn =
        CountLiveWires(workspace_.Circuit) > 0 || CountLiveElements(workspace_.Circuit) > 0;
    mnuCopyDrawing_->setEnabled(drawn);
    mnuExportDrawing_->setEnabled(drawn);
}

bool EditCommands::Undo() {
    const bool undone = UndoStep(history_, workspace_.Step, workspace_.Circuit, editor_);
    Sync();
    if (undone) {
        emit DrawingRestored();
    }
    return undone;
}

bool EditCommands::Redo() {
    const bool redone = RedoStep(history_, workspace_.Step, workspace_.Circuit, editor_);
    Sync();
    if (redone) {
        emit DrawingRestored();
    }
    return redone;
}

bool EditCommands::CopyDrawing() {
    QMimeData* data = DrawingMimeData(workspace_, canvas_.CurrentLabels());
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (data == nullptr || clipboard == nullptr) {
        delete data;
        return false;
    }
    clipboard->setMimeData(data);
    return true;
}

bool EditCommands::ExportDrawing(const QString& path) {
    const std::optional<DrawingFileFormat> format = DrawingFormatOf(path.toStdString());
    if (!format) {
        prompts_.ShowMessage("The drawing can be exported as SVG (.svg) or PNG (.png): end the "
                             "file's name with one of these.",
                             MessageIcon::Exclamation);
        return false;
    }
    const std::string bytes = DrawingBytes(workspace_, canvas_.CurrentLabels(), *format);
    const FileWriteResult written = bytes.empty() ? FileWriteResult{false, "there is no drawing"}
                                                  : WriteFileSafely(path.toStdString(), bytes);
    if (!written.written) {
        prompts_.ShowMessage("The drawing could not be written to " + path.toStdString() + ": " +
                                 written.reason + ".",
                             MessageIcon::Exclamation);
    }
    return written.written;
}

void EditCommands::ExportClicked() {
    QString path = askExportPath_ ? askExportPath_() : QString();
    if (path.isEmpty()) {
        return;
    }
    // A name typed without an ending gets the vector picture, which prints sharp at any size.
    if (QFileInfo(path).suffix().isEmpty()) {
        path += QStringLiteral(".svg");
    }
    ExportDrawing(path);
}

} // namespace ampora::ui
