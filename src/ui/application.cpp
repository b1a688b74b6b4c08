#include "ui/application.h"

#include "tables/workspace.h"
#include "ui/app_icon.h"
#include "ui/main_window.h"

#include "ui/canvas.h"

#include <QApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>
#include <clocale>
#include <cstdio>
#include <string>

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

namespace {

// Prints the wall-clock time in milliseconds once the first paint has been processed.
class FirstPaintProbe : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !seen_) {
            seen_ = true;
            QTimer::singleShot(0, this, [] {
                const std::string line =
                    "first-paint-ms " + std::to_string(QDateTime::currentMSecsSinceEpoch()) + "\n";
                std::fputs(line.c_str(), stdout);
                std::fflush(stdout);
                QApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    bool seen_ = false;
};

void QuitAfterFirstPaint(MainWindow& window) {
    window.canvas()->installEventFilter(new FirstPaintProbe(&window));
}

} // namespace

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
    const QString file = CircuitFileFromArguments(QApplication::arguments());
    if (!file.isEmpty()) {
        window.OpenFileFromDesktop(file);
    }
    // For the start-up benchmark: report when the window has first been painted, and stop.
    if (qEnvironmentVariableIsSet("AMPORA_QUIT_AFTER_FIRST_PAINT")) {
        QuitAfterFirstPaint(window);
    }
    return QApplication::exec();
}

} // namespace ampora::ui
