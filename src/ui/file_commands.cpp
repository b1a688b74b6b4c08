#include "ui/main_window.h"

#include "document/document_commands.h"
#include "editor/editing_tools.h"
#include "settings/recent_files.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/equations_window.h"
#include "ui/install_paths.h"
#include "ui/report_window.h"
#include "ui/tool_hints.h"

#include <QCloseEvent>

namespace ampora::ui {

// ---- file commands ----

DocumentContext MainWindow::Context() {
    return DocumentContext{workspace_, *prompts_, *dialogs_, *store_, ExamplesDir().toStdString()};
}

void MainWindow::AfterCommand(const CommandResult& result) {
    if (result.cleared) {
        ResetEditor(editor_, result.undoAvailable);
        canvas_->unsetCursor();
        SetHint(QString::fromLatin1(kToolButtons[kWireTool].hint));
        SetStepStatus(QString());
        HideResultWindows();
        EnterStepPanel();
    }
    if (result.fileRead) {
        // The labels of a file's devices show their stored values.
        editor_.ValueText.items.fill(std::string());
    }
    FillRecentMenu();
    SyncToolbar();
    UpdateCaption();
    canvas_->update();
}

void MainWindow::FileNewClicked() {
    DocumentContext context = Context();
    AfterCommand(FileNew(context));
}

void MainWindow::FileOpenClicked() {
    DocumentContext context = Context();
    AfterCommand(FileOpen(context));
}

void MainWindow::RecentFileClicked(int index) {
    DocumentContext context = Context();
    const QString path = mnuRecentFile_[static_cast<std::size_t>(index)]->data().toString();
    AfterCommand(OpenRecent(context, path.toStdString()));
}

void MainWindow::OpenFileFromDesktop(const QString& path) {
    DocumentContext context = Context();
    AfterCommand(OpenRecent(context, path.toStdString()));
}

void MainWindow::FileSaveClicked() {
    DocumentContext context = Context();
    FileSave(context);
    AfterCommand(CommandResult{});
}

void MainWindow::FileSaveAsClicked() {
    DocumentContext context = Context();
    FileSaveAs(context);
    AfterCommand(CommandResult{});
}

void MainWindow::closeEvent(QCloseEvent* event) {
    DocumentContext context = Context();
    RunSavePrompt(context);
    SaveRegSettings();
    event->accept();
}

} // namespace ampora::ui
