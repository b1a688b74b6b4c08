// The "Check my work" tab driven as a student uses it: typing equations and values, pressing
// Check or Enter, and earning the hidden answers.

#include "../support/scripted_prompts.h"
#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "tables/workspace.h"
#include "ui/equations_window.h"
#include "workflow/step_transitions.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

namespace {

class CheckWorkTabTest : public QObject {
    Q_OBJECT

    ampora::Workspace workspace_;
    std::unique_ptr<ampora::ui::EquationsWindow> window_;

    template <typename T> T* Find(const QString& name) {
        T* widget = window_->findChild<T*>(name);
        if (widget == nullptr) {
            qFatal("no widget %s", qPrintable(name));
        }
        return widget;
    }

    QTabWidget* Tabs() { return Find<QTabWidget>(QStringLiteral("tabEquations")); }

    // Types the text into a field as a student does, replacing what it held, and presses
    // Enter or the field's Check button.
    QString Enter(const QString& field, const QString& button, const QString& verdict,
                  const QString& text, bool pressEnter) {
        auto* edit = Find<QLineEdit>(field);
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        for (const QChar c : text) {
            if (c.unicode() < 128) {
                QTest::keyClicks(edit, QString(c));
            } else {
                edit->insert(QString(c)); // typed from a character map or pasted
            }
        }
        if (pressEnter) {
            QTest::keyClick(edit, Qt::Key_Return);
        } else {
            QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
        }
        QLabel* label = Find<QLabel>(verdict);
        return label->isVisible() ? label->text() : QStringLiteral("(hidden)");
    }

    QString EnterEquation(int row, const QString& text, bool pressEnter = false) {
        return Enter(QStringLiteral("txtEquation%1").arg(row),
                     QStringLiteral("cmdCheckEquation%1").arg(row),
                     QStringLiteral("lblEquationVerdict%1").arg(row), text, pressEnter);
    }

    QString EnterValue(int row, const QString& text) {
        return Enter(QStringLiteral("txtValue%1").arg(row),
                     QStringLiteral("cmdCheckValue%1").arg(row),
                     QStringLiteral("lblValueVerdict%1").arg(row), text, true);
    }

    void Screenshot(const QString& name) {
        const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            QTest::qWait(50); // the layout settles as it would between two clicks
            window_->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
        }
    }

  private slots:
    void init() {
        workspace_ = ampora::Workspace{};
        ampora::test::ScriptedPrompts prompts;
        ampora::EraseWholeCircuit(workspace_.circuit);
        QVERIFY(ampora::LoadFromIniFile(workspace_.circuit,
                                        AMPORA_SOURCE_DIR "/examples/two_supernodes.amq")
                    .complete);
        QCOMPARE(ampora::LeaveStep1(workspace_, prompts), ampora::TransitionResult::Entered);
        QVERIFY(ampora::AutoName(workspace_, prompts));
        QCOMPARE(ampora::LeaveStep2(workspace_, prompts), ampora::TransitionResult::Entered);
        window_ = std::make_unique<ampora::ui::EquationsWindow>(workspace_);
        window_->resize(760, 620);
        window_->Rebuild();
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        Tabs()->setCurrentIndex(Tabs()->count() - 1);
    }

    void cleanup() { window_.reset(); }

    void oneLinePerEquationNamedAsTheCaptionsNameThem() {
        QCOMPARE(Tabs()->tabText(Tabs()->count() - 1), QStringLiteral("Check my work"));
        QStringList captions;
        for (int v = 1; v <= 3; ++v) {
            captions << Find<QLabel>(QStringLiteral("lblCheckEquation%1").arg(v))->text()
                     << Find<QLabel>(QStringLiteral("lblCheckValue%1").arg(v))->text();
        }
        QCOMPARE(captions.join(QStringLiteral(" | ")),
                 QStringLiteral("supernode V1 | V1 = | node V2 | V2 = | supernode V3 | V3 ="));
    }

    void eachEquationGetsItsVerdict() {
        const struct {
            int row;
            const char* text;
            bool enter;
            const char* verdict;
        } cases[] = {
            {1, "(V1-V2)/10 + V4/30 = 0", false, "Right"},
            {1, "(V1\u2212V2)/10 \u2212 V4/30 = 0", true,
             "Not right: one term has the wrong sign: the current through the 30 Ω resistor "
             "between V4 and 0."},
            {1, "(V1-V2)/10 + (V4/30 = 0", true,
             "Cannot be read: at character 21: a closing parenthesis is missing."},
            {1, "", false, "Type the equation first."},
            {2, "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0", true, "Right"},
            {3, "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0", true,
             "Not right: this is the equation of node V2, not of supernode V3."},
        };
        for (const auto& c : cases) {
            QCOMPARE(EnterEquation(c.row, QString::fromUtf8(c.text), c.enter),
                     QString::fromUtf8(c.verdict));
        }
        Screenshot(QStringLiteral("check_my_work"));
        // Typing again takes the old verdict away until the next Check.
        QTest::keyClicks(Find<QLineEdit>(QStringLiteral("txtEquation3")), QStringLiteral(" "));
        QVERIFY(!Find<QLabel>(QStringLiteral("lblEquationVerdict3"))->isVisible());
    }

    void valuesAreJudgedAtTheChosenFigures() {
        QCOMPARE(EnterValue(1, QStringLiteral("4.58")), QStringLiteral("Right"));
        QCOMPARE(EnterValue(1, QStringLiteral("4.6 V")),
                 QStringLiteral("Not right: not right to 3 significant figures."));
        QCOMPARE(EnterValue(2, QStringLiteral("-2.78")),
                 QStringLiteral("Not right: the size is right but the sign is wrong."));
        QCOMPARE(EnterValue(3, QStringLiteral("zero")),
                 QStringLiteral("Cannot be read: write a number such as 4.58 or 1.2E-3."));
        // At two figures 4.6 is right; what was typed stays and is judged again.
        workspace_.preferences.SigFigs = 2;
        window_->Rebuild();
        QCOMPARE(Find<QLineEdit>(QStringLiteral("txtValue1"))->text(), QStringLiteral("4.6 V"));
        QCOMPARE(Find<QLabel>(QStringLiteral("lblValueVerdict1"))->text(), QStringLiteral("Right"));
    }

    void hiddenAnswersAreEarnedByEveryEquationRight() {
        QSignalSpy shown(window_.get(), &ampora::ui::EquationsWindow::answersShown);
        window_->SetAnswersHidden(true);
        QVERIFY(!Tabs()->isTabVisible(1));
        QCOMPARE(Tabs()->currentIndex(), Tabs()->count() - 1);
        QVERIFY(Find<QPushButton>(QStringLiteral("cmdShowAnswers"))->isVisible());
        Screenshot(QStringLiteral("check_my_work_hidden"));
        EnterEquation(1, QStringLiteral("V4/30 + (V1-V2)/10 = 0"));
        EnterEquation(2, QStringLiteral("(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0"));
        QCOMPARE(shown.count(), 0);
        QVERIFY(window_->AnswersHidden());
        EnterEquation(3, QStringLiteral("2((V3-V2)/20 + V5/50) = 0"));
        QCOMPARE(shown.count(), 1);
        QVERIFY(!window_->AnswersHidden());
        QVERIFY(Tabs()->isTabVisible(1));
        QVERIFY(!Find<QPushButton>(QStringLiteral("cmdShowAnswers"))->isVisible());
    }

    void showTheAnswersGivesThemUp() {
        QSignalSpy shown(window_.get(), &ampora::ui::EquationsWindow::answersShown);
        window_->SetAnswersHidden(true);
        QTest::mouseClick(Find<QPushButton>(QStringLiteral("cmdShowAnswers")), Qt::LeftButton);
        QCOMPARE(shown.count(), 1);
        QVERIFY(Tabs()->isTabVisible(1));
    }

    void aNewCircuitStartsWithEmptyLines() {
        EnterEquation(1, QStringLiteral("V1 = 0"));
        ampora::test::ScriptedPrompts prompts;
        ampora::EraseWholeCircuit(workspace_.circuit);
        QVERIFY(
            ampora::LoadFromIniFile(workspace_.circuit, AMPORA_SOURCE_DIR "/examples/supernode.amq")
                .complete);
        QCOMPARE(ampora::LeaveStep1(workspace_, prompts), ampora::TransitionResult::Entered);
        QCOMPARE(ampora::LeaveStep2(workspace_, prompts), ampora::TransitionResult::Entered);
        window_->Rebuild();
        QCOMPARE(Find<QLineEdit>(QStringLiteral("txtEquation1"))->text(), QString());
        QVERIFY(window_->findChild<QLineEdit*>(QStringLiteral("txtEquation2")) == nullptr);
    }
};

} // namespace

QTEST_MAIN(CheckWorkTabTest)
#include "check_work_tab_test.moc"
