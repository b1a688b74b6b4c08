#include "ui/application.h"

#include "document/workspace.h"
#include "ui/app_icon.h"
#include "ui/main_window.h"

#include <QApplication>
#include <QFileInfo>
#include <QUrl>
#include <clocale>

namespace ampora::ui {

QString CircuitFileFromArguments(const QStringList& arguments) {
    // The program has no options of its own: the first argument is the file, whatever its name.
    if (arguments.size() < 2 || arguments.at(1).isEmpty()) {
        return {};
    }
    const QString& argument = arguments.at(1);
    // File managers normally hand over a path (the menu entry asks for %f), but some pass a
    // file: URL; both mean the same file.
    const QUrl url(argument);
    const QString path = url.isLocalFile() ? url.toLocalFile() : argument;
    return QFileInfo(path).absoluteFilePath();
}

int RunApplication(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setOrganizationName("Ampora");
    QApplication::setApplicationName("Ampora");
    // Lets the desktop match the window to its menu entry (ampora.desktop) and its icon.
    QGuiApplication::setDesktopFileName("ampora");
    QApplication::setWindowIcon(AppIcon());
    // Qt adopts the user's locale for the C library; numbers must never depend on it.
    std::setlocale(LC_NUMERIC, "C");

    Workspace workspace;
    MainWindow window(workspace);
    window.show();
    return QApplication::exec();
}

} // namespace ampora::ui
