// Options > "Practice: hide the answers" in a whole session: step 3 shows no result until the
// student's equations are right in "Check my work", or the student asks for the answers.

#include "../support/memory_settings_store.h"
#include "../support/scripted_prompts.h"
#include "editor/diagram_labels.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/equations_window.h"
#include "ui/main_window.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

namespace {

class PracticeTest : public QObject {
    Q_OBJECT

    ampora::Workspace workspace_;
    ampora::test::ScriptedPrompts prompts_;
    ampora::test::MemorySettingsStore store_;
    std::unique_ptr<ampora::ui::MainWindow> window_;

    template <typename T> T* Find(QObject* in, const char* name) {
        T* found = in->findChild<T*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("no %s", name);
        }
        return found;
    }
    void Press(const char* name) {
        QTest::mouseClick(Find<QPushButton>(window_.get(), name), Qt::LeftButton);
    }
    ampora::ui::EquationsWindow* Equations() { return window_->equationsWindow(); }

    // What the student can see of the results: the view buttons that work, the first
    // device's label, the Print command, the equations tab.
    QString Visible() {
        QStringList seen;
        for (const char* view : {"cmdViewCurrent", "cmdViewVoltage", "cmdViewPower"}) {
            if (Find<QPushButton>(window_.get(), view)->isEnabled()) {
                seen << QString::fromLatin1(view).mid(7);
            }
        }
        const ampora::DiagramLabels labels = window_->canvas()->CurrentLabels();
        seen << QString::fromStdString(labels.Values.at(1).Text);
        seen << (Find<QAction>(window_.get(), "mnuFilePrint")->isEnabled() ? "print" : "no print");
        auto* tabs = Find<QTabWidget>(Equations(), "tabEquations");
        seen << (tabs->isTabVisible(1) ? "equations" : "no equations");
        return seen.join(QStringLiteral(", "));
    }

    void Type(const char* field, const QString& text) {
        auto* edit = Find<QLineEdit>(Equations(), field);
        edit->clear();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }

    void Screenshot(QWidget* window, const QString& name) {
        const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            QTest::qWait(50);
            window->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
        }
    }

  private slots:
    void init() {
        workspace_ = ampora::Workspace{};
        store_.values.clear();
        store_.values["Parameters/SigFigs"] = "3";
        store_.values["Parameters/Instructions"] = "False";
        store_.values["Parameters/PracticeHideAnswers"] = "True";
        ampora::ui::WindowPorts ports;
        ports.prompts = &prompts_;
        ports.store = &store_;
        window_ = std::make_unique<ampora::ui::MainWindow>(workspace_, ports);
        window_->resize(1000, 720);
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        window_->OpenFileFromDesktop(
            QStringLiteral(AMPORA_SOURCE_DIR "/examples/two_supernodes.amq"));
        Press("cmdNext1");
        Press("cmdAutoName1");
        Press("cmdNext2");
        QCOMPARE(workspace_.Step, 3);
    }

    void cleanup() { window_.reset(); }

    void theAnswersComeWithTheLastRightEquation() {
        QVERIFY(Find<QAction>(window_.get(), "mnuPractice")->isChecked());
        QCOMPARE(Visible(), QStringLiteral("10 Ω, no print, no equations"));
        Screenshot(window_.get(), QStringLiteral("practice_main_window"));
        QCOMPARE(window_->StepStatusText().trimmed(),
                 QStringLiteral("Step 3: write the equations in the \"Check my work\" tab of "
                                "the equations window."));
        Type("txtEquation1", QStringLiteral("(V1-V2)/10 + V4/30 = 0"));
        Type("txtEquation2", QStringLiteral("(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0"));
        Type("txtEquation3", QStringLiteral("(V3-V2)/20 - V5/50 = 0"));
        QCOMPARE(Visible(), QStringLiteral("10 Ω, no print, no equations"));
        Type("txtEquation3", QStringLiteral("(V3-V2)/20 + V5/50 = 0"));
        QCOMPARE(Visible(), QStringLiteral("Current, Voltage, Power, 10 Ω, print, equations"));
        Press("cmdViewCurrent");
        QCOMPARE(QString::fromStdString(window_->canvas()->CurrentLabels().Values.at(1).Text),
                 QStringLiteral("0.181 \u2192"));
    }

    void showTheAnswersAndTheMenuGiveThemUp() {
        QTest::mouseClick(Find<QPushButton>(Equations(), "cmdShowAnswers"), Qt::LeftButton);
        QCOMPARE(Visible(), QStringLiteral("Current, Voltage, Power, 10 Ω, print, equations"));
        // The next circuit solved is hidden again, until the option is turned off.
        Press("cmdPrev3");
        Press("cmdNext2");
        QCOMPARE(Visible(), QStringLiteral("10 Ω, no print, no equations"));
        Find<QAction>(window_.get(), "mnuPractice")->trigger();
        QCOMPARE(Visible(), QStringLiteral("Current, Voltage, Power, 10 Ω, print, equations"));
        QCOMPARE(workspace_.preferences.PracticeHideAnswers, false);
    }
};

} // namespace

QTEST_MAIN(PracticeTest)
#include "practice_test.moc"
