#pragma once

#include <QMainWindow>

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    explicit MainWindow(Workspace& workspace, QWidget* parent = nullptr);

    // "DC Ampora - [untitled]" or "DC Ampora - " and the file's path.
    void UpdateCaption();

  private:
    Workspace& workspace_;
};

} // namespace ampora::ui
