// The Row operations tab of the equations window, driven by its keys and buttons, and the
// matrix file the window keeps for other programs.

#include "../support/scripted_prompts.h"
#include "document/amq_file.h"
#include "tables/workspace.h"
#include "ui/equations_window.h"
#include "ui/row_operations_tab.h"
#include "workflow/step_transitions.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

namespace {

class RowOperationsTabTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QVERIFY(dataHome_.isValid());
        qputenv("XDG_DATA_HOME", dataHome_.path().toLocal8Bit());
        QFile file(QStringLiteral(AMPORA_SOURCE_DIR "/examples/wheatstone_bridge.amq"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(ampora::ReadCircuitText(workspace_.circuit, file.readAll().toStdString()).complete);
        ampora::test::ScriptedPrompts prompts;
        QCOMPARE(ampora::LeaveStep1(workspace_, prompts), ampora::TransitionResult::Entered);
        QCOMPARE(ampora::LeaveStep2(workspace_, prompts), ampora::TransitionResult::Entered);
    }

    void keysAndButtonsWalkTheSteps() {
        ampora::ui::EquationsWindow window(workspace_);
        window.Rebuild();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* tab = window.findChild<ampora::ui::RowOperationsTab*>();
        QVERIFY(tab != nullptr);
        window.findChild<QTabWidget*>()->setCurrentWidget(tab);
        tab->setFocus();
        const auto label = [&] { return window.findChild<QLabel*>("lblStep")->text(); };
        struct Press {
            int key;
            const char* button; // pressed instead of the key when set
            const char* shown;
        };
        const Press presses[] = {
            {0, nullptr, "Before the first of 4 steps"},
            {Qt::Key_End, nullptr, "Step 4 of 4"},
            {Qt::Key_Right, nullptr, "Step 4 of 4"},
            {Qt::Key_Left, nullptr, "Step 3 of 4"},
            {Qt::Key_PageUp, nullptr, "Step 2 of 4"},
            {Qt::Key_Home, nullptr, "Before the first of 4 steps"},
            {Qt::Key_PageUp, nullptr, "Before the first of 4 steps"},
            {Qt::Key_PageDown, nullptr, "Step 1 of 4"},
            {Qt::Key_Right, nullptr, "Step 2 of 4"},
            {0, "cmdLast", "Step 4 of 4"},
            {0, "cmdPrevious", "Step 3 of 4"},
            {0, "cmdFirst", "Before the first of 4 steps"},
            {0, "cmdNext", "Step 1 of 4"},
        };
        for (const Press& press : presses) {
            if (press.button != nullptr) {
                QTest::mouseClick(window.findChild<QPushButton*>(press.button), Qt::LeftButton);
                tab->setFocus();
            } else if (press.key != 0) {
                QTest::keyClick(tab, static_cast<Qt::Key>(press.key));
            }
            QCOMPARE(label(), QString::fromUtf8(press.shown));
        }
        QVERIFY(!window.findChild<QPushButton*>("cmdFirst")->isEnabled() == (tab->Step() == 0));

        // Every step looks different from the one before it, in decimals and in fractions.
        for (const bool fractions : {false, true}) {
            window.findChild<QCheckBox*>("chkFractions")->setChecked(fractions);
            QCOMPARE(tab->FractionsShown(), fractions);
            QImage before;
            for (int step = 0; step < tab->StepCount(); ++step) {
                tab->ShowStep(step);
                QVERIFY(!tab->Picture().isNull());
                QVERIFY2(tab->Picture() != before, qPrintable(QString::number(step)));
                before = tab->Picture();
                Shoot(window, QStringLiteral("row_operations_%1_%2")
                                  .arg(fractions ? "fractions" : "decimals")
                                  .arg(step));
            }
        }
        // A new solution is read from its first step.
        window.ScrollToTop();
        QCOMPARE(tab->Step(), 0);
    }

    void theWindowWritesTheMatrixFileForOtherPrograms() {
        const QString path = dataHome_.path() + QStringLiteral("/Ampora/ampora.gj");
        QFile::remove(path);
        ampora::ui::EquationsWindow window(workspace_);
        window.Rebuild();
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("2\r\n0.035,-0.02,0.1\r\n-0.02,3.066666666666667E-2,"
                                            "6.666666666666667E-2\r\n"));
    }

  private:
    static void Shoot(QWidget& window, const QString& name) {
        const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            QCoreApplication::processEvents();
            window.grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
        }
    }

    QTemporaryDir dataHome_;
    ampora::Workspace workspace_;
};

} // namespace

QTEST_MAIN(RowOperationsTabTest)
#include "row_operations_tab_test.moc"
