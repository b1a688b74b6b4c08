// Steps 2 and 3 in the main window: naming the nodes, the solved views, the equations window
// beside them, the refusals on the way, and the practice that hides the answers.

#include "../support/test_files.h"
#include "analysis/circuit_checks.h"
#include "ui/equations_window.h"
#include "ui_test.h"

#include <QDir>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>

using ampora::test::ExamplePath;
using ampora::test::Session;

namespace {

const char* const kViewButtons[] = {"cmdViewCircuit", "cmdViewCurrent", "cmdViewVoltage",
                                    "cmdViewPower"};

QStringList NodeNames(const Session& s) {
    QStringList names;
    const auto labels = s.canvas()->CurrentLabels();
    for (std::size_t n = 1; n < labels.Nodes.size(); ++n) {
        names << QString::fromStdString(labels.Nodes[n].Text);
    }
    return names;
}

// Where the window stands: its step panel, what it lets the student use, its step text.
QString State(const Session& s) {
    return QString("%1, toolbar %2, print %3, equations %4:%5")
        .arg(s.Panel())
        .arg(s.Find<QToolBar>("Toolbar")->isEnabled() ? "on" : "off")
        .arg(s.Find("mnuFilePrint")->isEnabled() ? "on" : "off")
        .arg(s.window->equationsWindow()->isVisible() ? "shown" : "hidden")
        .arg(s.window->StepStatusText());
}

// Everything the window shows of a solved circuit: the node names, the labels and status texts
// of each view, and the equations window's page, top to bottom, its pictures as a screen reader
// hears them; with `counting`, the counting tab before it.
QString Results(const Session& s, bool counting) {
    QStringList out = {"nodes: " + NodeNames(s).join(", ")};
    for (const char* view : kViewButtons) {
        s.Press(view);
        const auto labels = s.canvas()->CurrentLabels();
        QStringList texts;
        for (std::size_t e = 1; e < labels.Values.size(); ++e) {
            if (s.workspace.Circuit.Elements[e].Kind != ampora::kEmpty) { // slots of an earlier one
                texts << QString::fromStdString(labels.Values[e].Text);
            }
        }
        out << texts.join(" | ");
        out << "  status:" + s.window->StatusText() + "|" + s.window->StepStatusText();
    }
    const auto* equations = s.window->equationsWindow();
    if (counting) {
        out << equations->findChild<QPlainTextEdit*>("txtCounting")->toPlainText();
    }
    const QWidget* page = equations->findChild<QWidget*>("pageEquations");
    for (const QObject* child : page->children()) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        if (widget == nullptr || widget->isHidden()) {
            continue;
        }
        if (const auto* grid = qobject_cast<const QTableWidget*>(widget)) {
            out << "grid " + grid->objectName() + ":";
            for (int r = 0; r < grid->rowCount(); ++r) {
                QStringList cells;
                for (int c = 0; c < grid->columnCount(); ++c) {
                    cells << grid->item(r, c)->text();
                }
                out << "  " + cells.join(" | ");
            }
        } else if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            out << (label->pixmap().isNull() ? label->text()
                                             : "picture: " + label->accessibleName());
        }
    }
    return out.join('\n') + '\n';
}

} // namespace

class StepsTest : public QObject {
    Q_OBJECT

    QTemporaryDir work_;

    QString Write(const QString& text) const {
        const QString path = work_.path() + "/case.amq";
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0 ? path : QString();
    }

  private slots:
    // Every example from its drawing to the results, one after another in the same window;
    // the largest again at six figures, to which the labels, totals, captions and grids change
    // at once. At every size the equations page holds all it shows, and its scroll bars reach
    // exactly to its edges: nothing cut off, no empty room to scroll into, also for a circuit
    // of one unknown after one of three.
    void everyExampleIsSolvedThroughTheWindow() {
        QString dump;
        QStringList wrong;
        Session s;
        for (const QString& name : QDir(ExamplePath(QString())).entryList({"*.amq"}, QDir::Files)) {
            s.Solve(name);
            QVERIFY2(s.prompts.messages.empty(), qPrintable(name));
            // The counting tab of one, whose text the core tests hold for every circuit.
            const bool largest = name == QString("two_supernodes.amq");
            dump += "== " + name + "\n" + Results(s, largest);
            ampora::test::Shoot(s.window.get(), QFileInfo(name).baseName() + "_power");
            ampora::test::Shoot(s.window->equationsWindow(), QFileInfo(name).baseName() + "_eqns");
            if (largest) {
                s.window->mnuSF_Click(6);
                dump += "== " + name + " at 6 figures\n" + Results(s, false);
                s.window->mnuSF_Click(3);
            }
            auto* equations = s.window->equationsWindow();
            equations->findChild<QTabWidget*>("tabEquations")->setCurrentIndex(1);
            auto* scroll = equations->findChild<QScrollArea*>("scrollEquations");
            QCoreApplication::processEvents();
            if (scroll->verticalScrollBar()->value() != 0) {
                wrong << name + " opens scrolled down";
            }
            for (const QSize size : {QSize(900, 900), QSize(420, 200), QSize(1400, 300)}) {
                equations->resize(size);
                QCoreApplication::processEvents();
                const QWidget* page = scroll->widget();
                QRect shown;
                for (QWidget* child : page->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                    shown |= child->isVisible() ? child->geometry() : QRect();
                }
                const QSize room = page->size() - scroll->viewport()->size();
                if (page->height() <= shown.bottom() || page->width() <= shown.right() ||
                    scroll->verticalScrollBar()->maximum() != std::max(0, room.height()) ||
                    scroll->horizontalScrollBar()->maximum() != std::max(0, room.width()) ||
                    (room.height() > 0 && page->height() > shown.bottom() + 41)) {
                    wrong << QString("%1 at %2x%3").arg(name).arg(size.width()).arg(size.height());
                }
            }
            scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
            s.Press("cmdPrev3");
            s.Press("cmdPrev2");
        }
        const std::string actual = dump.toStdString();
        QCOMPARE(actual, ampora::test::ExpectedText("ui/solved_examples.txt", actual));
        QCOMPARE(wrong, QStringList());
    }

    // Forth and back through the steps: each step shows its own panel and commands, the names
    // stay, a supernode's battery looks the same on each entry to step 2 (it once changed
    // colour), and a new circuit ends the results.
    void theStepsGoForthAndBackKeepingTheNames() {
        Session s;
        QSignalSpy reportAsked(s.window.get(), &ampora::ui::MainWindow::ReportRequested);
        s.window->OpenFileFromDesktop(ExamplePath("supernode.amq"));
        const ampora::Element& battery = s.workspace.Circuit.Elements[1];
        const auto picture = [&] {
            return s.canvas()
                ->grab(QRect(int(battery.X) - 16, int(battery.Y) - 16, 32, 32))
                .toImage();
        };
        QStringList states = {State(s)};
        s.window->ShowReport(); // only step 3 has a report
        s.Press("cmdNext1");
        const QImage first = picture();
        const QStringList named = NodeNames(s);
        states << State(s);
        s.Press("cmdNext2");
        states << State(s);
        s.Find("mnuFilePrint")->trigger();
        s.Press("cmdViewPower");
        s.Press("cmdPrev3");
        QCOMPARE(s.workspace.ViewMode, ampora::kViewValues);
        states << State(s);
        s.Press("cmdPrev2");
        QVERIFY(s.canvas()->CurrentLabels().Nodes.empty());
        states << State(s);
        s.Press("cmdNext1");
        QCOMPARE(picture(), first);
        QCOMPARE(NodeNames(s), named);
        s.Press("cmdAutoName2");
        QCOMPARE(NodeNames(s), QStringList(named.size(), "[ ]"));
        s.Press("cmdAutoName1");
        QCOMPARE(NodeNames(s), named);
        s.Press("cmdNext2");
        s.Find("mnuFileNew")->trigger();
        states << State(s);
        QCOMPARE(reportAsked.count(), 1);
        QCOMPARE(
            states.join('\n'),
            "picToolBox, toolbar on, print off, equations hidden:\n"
            "picStep2, toolbar off, print off, equations hidden: Step 2: Click a node's label "
            "to name it.  Unnamed nodes are marked [ ]  \n"
            "picStep3, toolbar off, print on, equations shown: Step 3: Click a button above or "
            "click a tab on the report.  \n"
            "picStep2, toolbar off, print off, equations hidden: Step 2: Click the label of a "
            "node to give it a name.  Unamed ones are marked [ ]  \n"
            "picToolBox, toolbar on, print off, equations hidden: Step 1: Edit the circuit. \n"
            "picToolBox, toolbar on, print off, equations hidden:");
    }

    // One refusal of each step, with its message; the core tests hold every message's text.
    void eachRefusalShowsItsMessageAndLeavesTheStepAsItWas() {
        QFile supernode(ExamplePath("supernode.amq"));
        QVERIFY(supernode.open(QIODevice::ReadOnly));
        const struct {
            QString text;
            bool rename; // the first node takes the second one's name in step 2
            int refusedIn;
            QString message;
        } cases[] = {
            {"0\r\n0\r\n0\r\n", false, 1, ""},
            {"2\r\n0,0,160,0\r\n80,0,80,80\r\n0\r\n0\r\n", false, 1, ampora::kLooseEndsMessage},
            {QString::fromUtf8(supernode.readAll()), true, 2, ampora::kDuplicateNamesMessage},
        };
        for (const auto& c : cases) {
            Session s;
            s.window->OpenFileFromDesktop(Write(c.text));
            s.Press("cmdNext1");
            if (c.refusedIn == 2) {
                s.Press("cmdAutoName1");
                if (c.rename) {
                    s.workspace.Circuit.NodeLabels[1].Name = s.workspace.Circuit.NodeLabels[2].Name;
                }
                s.Press("cmdNext2");
            }
            QCOMPARE(int(s.workspace.Step), c.refusedIn);
            QCOMPARE(s.Panel(), c.refusedIn == 1 ? "picToolBox" : "picStep2");
            QStringList shown;
            for (const std::string& message : s.prompts.messages) {
                shown << QString::fromStdString(message).remove("(!) ");
            }
            QCOMPARE(shown, c.message.isEmpty() ? QStringList() : QStringList{c.message});
            QVERIFY(!s.window->equationsWindow()->isVisible());
        }
    }

    // Options > "Practice: hide the answers": step 3 shows no result until the student's
    // equations are right in "Check my work", or the student asks for the answers.
    void practiceHidesTheAnswersUntilEarnedOrGivenUp() {
        Session s(Session::Scripted, QSize(1000, 720),
                  {{"Parameters/PracticeHideAnswers", "True"}});
        s.Solve("two_supernodes.amq");
        auto* equations = s.window->equationsWindow();
        // The view buttons that work, the first device's label, Print, the equations tab.
        const auto visible = [&] {
            QStringList seen;
            for (const char* view : {"cmdViewCurrent", "cmdViewVoltage", "cmdViewPower"}) {
                if (s.Find<QPushButton>(view)->isEnabled()) {
                    seen << QString::fromLatin1(view).mid(7);
                }
            }
            seen << QString::fromStdString(s.canvas()->CurrentLabels().Values.at(1).Text);
            seen << (s.Find("mnuFilePrint")->isEnabled() ? "print" : "no print");
            seen << (equations->findChild<QTabWidget*>()->isTabVisible(1) ? "equations"
                                                                          : "no equations");
            seen << (equations->findChild<QPushButton*>("cmdShowAnswers")->isVisible() ? "offered"
                                                                                       : "");
            return seen.join(", ");
        };
        const auto type = [&](int row, const QString& text) {
            auto* edit = equations->findChild<QLineEdit*>(QString("txtEquation%1").arg(row));
            edit->clear();
            QTest::keyClicks(edit, text);
            QTest::keyClick(edit, Qt::Key_Return);
        };
        const QString hidden = "10 Ω, no print, no equations, offered";
        const QString shown = "Current, Voltage, Power, 10 Ω, print, equations, ";
        QVERIFY(s.Find("mnuPractice")->isChecked());
        QCOMPARE(visible(), hidden);
        QCOMPARE(s.window->StepStatusText().trimmed(),
                 QString("Step 3: write the equations in the \"Check my work\" tab of the "
                         "equations window."));
        ampora::test::Shoot(s.window.get(), "practice_main_window");
        type(1, "(V1-V2)/10 + V4/30 = 0");
        type(2, "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0");
        type(3, "(V3-V2)/20 - V5/50 = 0");
        QCOMPARE(visible(), hidden);
        type(3, "(V3-V2)/20 + V5/50 = 0");
        QCOMPARE(visible(), shown);
        s.Press("cmdViewCurrent");
        QCOMPARE(QString::fromStdString(s.canvas()->CurrentLabels().Values.at(1).Text),
                 "0.181 \u2192");
        // The next circuit solved is hidden again; Show the answers gives them up.
        s.Press("cmdPrev3");
        s.Press("cmdNext2");
        QCOMPARE(visible(), hidden);
        QTest::mouseClick(equations->findChild<QPushButton*>("cmdShowAnswers"), Qt::LeftButton);
        QCOMPARE(visible(), shown);
        s.Press("cmdPrev3");
        s.Press("cmdNext2");
        QCOMPARE(visible(), hidden);
        s.Find("mnuPractice")->trigger(); // turned off, the answers show at once
        QCOMPARE(visible(), shown);
        QVERIFY(!s.workspace.Preferences.PracticeHideAnswers);
        // The power totals and a hint share the status bar: at every width each keeps its own
        // place, the totals whole, the hint cut off at its own edge rather than drawn over them.
        s.Press("cmdViewPower");
        QStatusTipEvent tip(QString(" Number of significant figures used to display "
                                    "answers, and more text than a panel has room for "));
        QCoreApplication::sendEvent(s.window.get(), &tip);
        const auto* totals = s.Find<QLabel>("StatusPanel1");
        const auto* hint = s.Find<QLabel>("StatusBar1");
        for (const int width : {1000, 760, 560}) {
            s.window->resize(width, 600);
            QCoreApplication::processEvents();
            const QString where = QString::number(s.window->width());
            QVERIFY2(!totals->geometry().intersects(hint->geometry()), qPrintable(where));
            QVERIFY2(totals->width() >= totals->fontMetrics().horizontalAdvance(totals->text()),
                     qPrintable(where));
            QVERIFY2(hint->geometry().right() <= s.window->statusBar()->width(), qPrintable(where));
        }
    }
};

AMPORA_UI_TEST(StepsTest);
#include "steps_test.moc"
