#include "ui/main_window.h"

#include "document/workspace.h"

namespace ampora::ui {

MainWindow::MainWindow(Workspace& workspace, QWidget* parent)
    : QMainWindow(parent), workspace_(workspace) {
    resize(667, 467);
    UpdateCaption();
}

void MainWindow::UpdateCaption() {
    const QString name = workspace_.CurrentFileName.empty()
                             ? QStringLiteral("[untitled]")
                             : QString::fromStdString(workspace_.CurrentFileName);
    setWindowTitle(QStringLiteral("DC Ampora - ") + name);
}

} // namespace ampora::ui
