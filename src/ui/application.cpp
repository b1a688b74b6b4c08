#include "ui/application.h"

#include "document/workspace.h"
#include "ui/main_window.h"

#include <QApplication>
#include <clocale>

namespace ampora::ui {

int RunApplication(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setOrganizationName("Ampora");
    QApplication::setApplicationName("Ampora");
    // Qt adopts the user's locale for the C library; numbers must never depend on it.
    std::setlocale(LC_NUMERIC, "C");

    Workspace workspace;
    MainWindow window(workspace);
    window.show();
    return QApplication::exec();
}

} // namespace ampora::ui
