// The equations window's own tabs driven as a student uses them: "Check my work" (typing
// equations and values, Check or Enter, earning the hidden answers) and Row operations (its
// keys and buttons), and the matrix file the window keeps for other programs.

#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "ui/equations_window.h"
#include "ui/row_operations_tab.h"
#include "ui_test.h"
#include "workflow/step_transitions.h"

#include <QCheckBox>
#include <QTabWidget>
#include <QTemporaryDir>

namespace {

// The example solved as the window solves it, AutoName's names given.
void Solve(ampora::Workspace& ws, const char* example) {
    ampora::test::ScriptedPrompts prompts;
    ampora::EraseWholeCircuit(ws.circuit);
    QVERIFY(ampora::LoadFromIniFile(ws.circuit, ampora::test::ExamplePath(example).toStdString())
                .complete);
    QCOMPARE(ampora::LeaveStep1(ws, prompts), ampora::TransitionResult::Entered);
    QVERIFY(ampora::AutoName(ws, prompts));
    QCOMPARE(ampora::LeaveStep2(ws, prompts), ampora::TransitionResult::Entered);
}

} // namespace

class EquationsWindowTest : public QObject {
    Q_OBJECT

    QTemporaryDir dataHome_;
    ampora::Workspace workspace_;
    std::unique_ptr<ampora::ui::EquationsWindow> window_;

    template <typename T> T* Find(const QString& name) const {
        T* widget = window_->findChild<T*>(name);
        if (widget == nullptr) {
            qFatal("no widget %s", qPrintable(name));
        }
        return widget;
    }
    QTabWidget* Tabs() const { return Find<QTabWidget>("tabEquations"); }

    void Open(const char* example) {
        Solve(workspace_, example);
        window_ = std::make_unique<ampora::ui::EquationsWindow>(workspace_);
        window_->resize(760, 620);
        window_->Rebuild();
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        Tabs()->setCurrentIndex(Tabs()->count() - 1);
    }

    // Types into a line of "Check my work" as a student does, replacing what it held, presses
    // Enter or the line's Check button, and reads the verdict.
    QString Enter(const char* what, int row, const QString& text, bool pressEnter = true) {
        auto* edit = Find<QLineEdit>(QString("txt%1%2").arg(what).arg(row));
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        for (const QChar c : text) {
            // Beyond ASCII the characters come from a character map or are pasted.
            c.unicode() < 128 ? QTest::keyClicks(edit, QString(c)) : edit->insert(QString(c));
        }
        if (pressEnter) {
            QTest::keyClick(edit, Qt::Key_Return);
        } else {
            QTest::mouseClick(Find<QPushButton>(QString("cmdCheck%1%2").arg(what).arg(row)),
                              Qt::LeftButton);
        }
        const auto* verdict = Find<QLabel>(QString("lbl%1Verdict%2").arg(what).arg(row));
        return verdict->isVisible() ? verdict->text() : QString("(hidden)");
    }

  private slots:
    void initTestCase() {
        // The matrix file goes here, not among the user's files.
        qputenv("XDG_DATA_HOME", dataHome_.path().toLocal8Bit());
    }
    void cleanup() { window_.reset(); }

    // Each line is named as the captions name the equations, and gives each answer typed its
    // verdict, after Enter or Check.
    void everyLineOfCheckMyWorkGetsItsVerdict() {
        Open("two_supernodes.amq");
        QString seen = Tabs()->tabText(Tabs()->count() - 1) + ":";
        for (int v = 1; v <= 3; ++v) {
            seen += " " + Find<QLabel>(QString("lblCheckEquation%1").arg(v))->text() + " | " +
                    Find<QLabel>(QString("lblCheckValue%1").arg(v))->text();
        }
        const struct {
            const char* what;
            int row;
            const char* text;
            bool enter;
        } answers[] = {
            {"Equation", 1, "(V1-V2)/10 + V4/30 = 0", false},
            {"Equation", 1, "(V1\u2212V2)/10 \u2212 V4/30 = 0", true},
            {"Equation", 1, "(V1-V2)/10 + (V4/30 = 0", true},
            {"Equation", 1, "", false},
            {"Equation", 2, "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0", true},
            {"Equation", 3, "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0", true},
            {"Value", 1, "4.58", true},
            {"Value", 1, "4.6 V", false},
            {"Value", 2, "-2.78", true},
            {"Value", 3, "zero", true},
        };
        for (const auto& a : answers) {
            seen += QString("\n%1 %2 \"%3\" by %4: ")
                        .arg(a.what)
                        .arg(a.row)
                        .arg(QString::fromUtf8(a.text), a.enter ? "Enter" : "Check") +
                    Enter(a.what, a.row, QString::fromUtf8(a.text), a.enter);
        }
        ampora::test::Shoot(window_.get(), "check_my_work");
        // Typing again takes the old verdict away until the next Check.
        QTest::keyClicks(Find<QLineEdit>("txtEquation3"), " ");
        seen += "\nEquation 3 typed on: " +
                QString(Find<QLabel>("lblEquationVerdict3")->isVisible() ? "shown" : "hidden");
        // At two figures 4.6 is right; what was typed stays and is judged again.
        workspace_.preferences.SigFigs = 2;
        window_->Rebuild();
        seen += "\nValue 1 at two figures: " + Find<QLineEdit>("txtValue1")->text() + ": " +
                Find<QLabel>("lblValueVerdict1")->text() + "\n";
        QCOMPARE(seen, ampora::test::Expected("ui/check_my_work.txt", seen));
        // A new circuit starts with empty lines, as many as it has equations.
        Solve(workspace_, "supernode.amq");
        window_->Rebuild();
        QCOMPARE(Find<QLineEdit>("txtEquation1")->text(), QString());
        QVERIFY(window_->findChild<QLineEdit*>("txtEquation2") == nullptr);
    }

    void rowOperationsWalkTheStepsByKeysAndButtons() {
        QFile file(dataHome_.path() + QString("/Ampora/ampora.gj"));
        file.remove();
        Open("wheatstone_bridge.amq");
        auto* tab = window_->findChild<ampora::ui::RowOperationsTab*>();
        Tabs()->setCurrentWidget(tab);
        tab->setFocus();
        const struct {
            int key;
            const char* button; // pressed instead of a key when set
            const char* shown;
        } presses[] = {
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
        for (const auto& press : presses) {
            if (press.button != nullptr) {
                QTest::mouseClick(Find<QPushButton>(QString::fromLatin1(press.button)),
                                  Qt::LeftButton);
                tab->setFocus();
            } else if (press.key != 0) {
                QTest::keyClick(tab, static_cast<Qt::Key>(press.key));
            }
            QCOMPARE(Find<QLabel>("lblStep")->text(), QString(press.shown));
            QCOMPARE(Find<QPushButton>("cmdFirst")->isEnabled(), tab->Step() != 0);
        }
        // Every step looks different from the one before it, in decimals and in fractions.
        for (const bool fractions : {false, true}) {
            Find<QCheckBox>("chkFractions")->setChecked(fractions);
            QCOMPARE(tab->FractionsShown(), fractions);
            QImage before;
            for (int step = 0; step < tab->StepCount(); ++step) {
                tab->ShowStep(step);
                QVERIFY(!tab->Picture().isNull());
                QVERIFY2(tab->Picture() != before, qPrintable(QString::number(step)));
                before = tab->Picture();
                ampora::test::Shoot(window_.get(), QString("row_operations_%1_%2")
                                                       .arg(fractions ? "fractions" : "decimals")
                                                       .arg(step));
            }
        }
        // A new solution is read from its first step.
        window_->ScrollToTop();
        QCOMPARE(tab->Step(), 0);
        // The window keeps the matrix for other programs.
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("2\r\n0.035,-0.02,0.1\r\n-0.02,3.066666666666667E-2,"
                                            "6.666666666666667E-2\r\n"));
    }
};

AMPORA_UI_TEST(EquationsWindowTest);
#include "equations_window_test.moc"
