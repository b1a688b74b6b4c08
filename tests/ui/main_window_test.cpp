#include "document/workspace.h"
#include "ui/main_window.h"

#include <QtTest>

class MainWindowTest : public QObject {
    Q_OBJECT

  private slots:
    void untitledCaptionShowsTheMarker() {
        ampora::Workspace workspace;
        ampora::ui::MainWindow window(workspace);
        window.show();
        QCOMPARE(window.windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
        workspace.CurrentFileName = "/tmp/divider.amq";
        window.UpdateCaption();
        QCOMPARE(window.windowTitle(), QStringLiteral("DC Ampora - /tmp/divider.amq"));
        QVERIFY(window.close());
    }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
