#include "ui/application.h"
#include "ui/install_paths.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using ampora::ui::CircuitFileFromArguments;

class ApplicationArgumentsTest : public QObject {
    Q_OBJECT

  private slots:
    void aProgramStartedOnItsOwnOpensNoFile() {
        QCOMPARE(CircuitFileFromArguments({}), QString());
        QCOMPARE(CircuitFileFromArguments({QStringLiteral("ampora")}), QString());
        QCOMPARE(CircuitFileFromArguments({QStringLiteral("ampora"), QString()}), QString());
    }

    void theFileHandedOverByTheDesktopIsOpenedByItsFullPath() {
        const QStringList cases = {
            QStringLiteral("/home/student/circuits/my bridge.amq"),
            QStringLiteral("file:///home/student/circuits/my%20bridge.amq"),
        };
        for (const QString& argument : cases) {
            QCOMPARE(CircuitFileFromArguments({QStringLiteral("ampora"), argument}),
                     QStringLiteral("/home/student/circuits/my bridge.amq"));
        }
        // A name typed in a terminal is relative to the folder the program was started in.
        QCOMPARE(CircuitFileFromArguments({QStringLiteral("ampora"), QStringLiteral("a.amq")}),
                 QDir::current().absoluteFilePath(QStringLiteral("a.amq")));
    }

    void theProgramFindsItsFilesBesideItsBinaryOnceInstalled() {
        QTemporaryDir prefix;
        QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("bin")));
        QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("share/ampora/help")));
        const QString bin = prefix.path() + "/bin";
        QCOMPARE(ampora::ui::ShippedDir(bin, QStringLiteral("help")),
                 prefix.path() + "/share/ampora/help");
        // Not installed there: the build folder's program reads the source tree.
        QCOMPARE(ampora::ui::ShippedDir(bin, QStringLiteral("examples")),
                 QStringLiteral(AMPORA_SOURCE_DIR) + "/examples");
    }
};

QTEST_MAIN(ApplicationArgumentsTest)
#include "application_arguments_test.moc"
