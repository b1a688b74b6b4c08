// File > New practice circuit...: the dialog's three counts, what it says of a shape that
// cannot be made, and the circuit it opens. AMPORA_SCREENSHOT_DIR keeps pictures of both.

#include "../support/memory_settings_store.h"
#include "../support/scripted_prompts.h"
#include "tables/workspace.h"
#include "ui/main_window.h"
#include "ui/practice_dialog.h"
#include "workflow/step_transitions.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

namespace {

void Shoot(QWidget* widget, const QString& name) {
    const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
    if (!dir.isEmpty()) {
        widget->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
    }
}

void SetCounts(QDialog* dialog, int nodes, int superNodes, int sources) {
    dialog->findChild<QSpinBox*>(QStringLiteral("spnNodes"))->setValue(nodes);
    dialog->findChild<QSpinBox*>(QStringLiteral("spnSuperNodes"))->setValue(superNodes);
    dialog->findChild<QSpinBox*>(QStringLiteral("spnSources"))->setValue(sources);
}

QPushButton* OkButton(QDialog* dialog) {
    return dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

} // namespace

class PracticeDialogTest : public QObject {
    Q_OBJECT

  private slots:
    void ShapesThatCannotBeMadeAreToldAndCannotBeAccepted() {
        ampora::ui::PracticeDialog dialog({3, 0, 1});
        const struct {
            int nodes, superNodes, sources;
            const char* refusal;
        } rows[] = {
            {3, 0, 1, ""},
            {3, 2, 1,
             "3 nodes hold at most 1 supernode: a supernode joins two nodes of its own "
             "by a battery."},
            {2, 0, 4, "A circuit of 2 nodes has room for at most 2 current sources."},
            {10, 3, 4, ""},
        };
        for (const auto& row : rows) {
            SetCounts(&dialog, row.nodes, row.superNodes, row.sources);
            const QString refusal = QString::fromUtf8(row.refusal);
            QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblRefusal"))->text(), refusal);
            QCOMPARE(OkButton(&dialog)->isEnabled(), refusal.isEmpty());
        }
        SetCounts(&dialog, 1, 5, 9); // the spin boxes hold to the limits
        QCOMPARE(dialog.Shape().Nodes, 2);
        QCOMPARE(dialog.Shape().SuperNodes, 3);
        QCOMPARE(dialog.Shape().Sources, 4);
    }

    void TheCircuitOpensUntitledInStepOneAndSolvesWithTheCountsAsked() {
        ampora::Workspace workspace;
        ampora::test::ScriptedFileDialogs files;
        ampora::ui::MainWindow window(workspace, ampora::ui::WindowPorts{nullptr, &files});
        window.show(); // at the size a first start gives it
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // The instructions lie over the canvas until OK is clicked.
        if (auto* ok = window.findChild<QPushButton*>(QStringLiteral("cmdOKInstruct1"));
            ok != nullptr && ok->isVisible()) {
            QTest::mouseClick(ok, Qt::LeftButton);
        }
        for (const ampora::PracticeShape shape :
             {ampora::PracticeShape{4, 1, 1}, ampora::PracticeShape{10, 2, 3}}) {
            QTimer::singleShot(50, [&] {
                auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                QVERIFY(dialog != nullptr);
                SetCounts(dialog, shape.Nodes, shape.SuperNodes, shape.Sources);
                Shoot(dialog, QStringLiteral("practice_dialog"));
                QTest::mouseClick(OkButton(dialog), Qt::LeftButton);
                // The circuit before is untitled and drawn: New asks first, and No drops it.
                QTimer::singleShot(50, [] {
                    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                        QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
                    }
                });
            });
            window.findChild<QAction*>(QStringLiteral("mnuFilePractice"))->trigger();
            QCOMPARE(window.windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
            QCOMPARE(workspace.Step, 1);
            QVERIFY(workspace.circuit.NumWires > 0);
            Shoot(&window, QStringLiteral("practice_circuit_%1_nodes").arg(shape.Nodes));

            ampora::Workspace copy = workspace;
            ampora::test::ScriptedPrompts prompts;
            QCOMPARE(ampora::LeaveStep1(copy, prompts), ampora::TransitionResult::Entered);
            QCOMPARE(int(copy.circuit.NumNodes), shape.Nodes);
        }
    }
};

QTEST_MAIN(PracticeDialogTest)
#include "practice_dialog_test.moc"
