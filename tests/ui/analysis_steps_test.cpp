// Whole sessions in the main window: from a circuit on the canvas through the naming of its
// nodes to the solved views and the equations window, and every refusal on the way.

#include "../support/memory_settings_store.h"
#include "../support/scripted_prompts.h"
#include "analysis/circuit_checks.h"
#include "analysis/format_number.h"
#include "dialog_answerer.h"
#include "editor/diagram_labels.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/circuit_paint.h"
#include "ui/diagram_painter.h"
#include "ui/equations_window.h"
#include "ui/main_window.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

namespace {

QString ExamplePath(const QString& name) {
    return QStringLiteral(AMPORA_SOURCE_DIR "/examples/") + name;
}

// What ampora-cli solve reports for the file, AutoName pattern 1.
QJsonObject CliSolve(const QString& path, int sigFigs) {
    QProcess cli;
    cli.start(QStringLiteral(AMPORA_CLI_PATH),
              {QStringLiteral("solve"), QStringLiteral("--autoname=1"), QStringLiteral("--sigfigs"),
               QString::number(sigFigs), path});
    cli.waitForFinished(30000);
    return QJsonDocument::fromJson(cli.readAllStandardOutput()).object();
}

QString Format(double value, int sigFigs) {
    return QString::fromStdString(ampora::FormatNumber(value, sigFigs));
}

// One window with its own workspace, settings in memory and scripted (or real) prompts.
struct Session {
    ampora::Workspace workspace;
    ampora::test::ScriptedPrompts prompts;
    ampora::test::MemorySettingsStore store;
    std::unique_ptr<ampora::ui::MainWindow> window;

    explicit Session(bool realPrompts = false) {
        store.values["Parameters/SigFigs"] = "3";
        store.values["Parameters/Instructions"] = "False";
        ampora::ui::WindowPorts ports;
        ports.prompts = realPrompts ? nullptr : &prompts;
        ports.store = &store;
        window = std::make_unique<ampora::ui::MainWindow>(workspace, ports);
        window->resize(1000, 720);
        window->move(0, 0);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }
    template <typename T> T* Find(const char* name) const {
        return window->findChild<T*>(QString::fromLatin1(name));
    }
    void Press(const char* button) const {
        auto* b = Find<QPushButton>(button);
        QVERIFY2(b != nullptr && b->isVisible(), button);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    void Open(const QString& path) const { window->OpenFileFromDesktop(path); }
    QString Panel() const {
        return Find<QStackedWidget>("stepPanels")->currentWidget()->objectName();
    }
    ampora::DiagramLabels Labels() const { return window->canvas()->CurrentLabels(); }
    QStringList NodeNames() const {
        QStringList names;
        const auto labels = Labels();
        for (std::size_t n = 1; n < labels.Nodes.size(); ++n) {
            names << QString::fromStdString(labels.Nodes[n].Text);
        }
        return names;
    }
    ampora::ui::EquationsWindow* Equations() const { return window->equationsWindow(); }
    template <typename T> T* InEquations(const char* name) const {
        return Equations()->findChild<T*>(QString::fromLatin1(name));
    }
    void Shoot(const QString& name) const {
        const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            QCoreApplication::processEvents(); // the status bar lays out its panels again
            window->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
        }
    }
    void ShootEquations(const QString& name) const {
        const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            // As it opened, then tall enough to show the whole tab at once.
            const QSize opened = Equations()->size();
            QCoreApplication::processEvents();
            Equations()->grab().save(QString::fromLocal8Bit(dir) + "/" + name + "_opened.png");
            Equations()->resize(opened.width(), 1100);
            QCoreApplication::processEvents();
            Equations()->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
            Equations()->resize(opened);
        }
    }
};

// The grid's cells, row by row, " | " between cells.
QStringList GridRows(const QTableWidget* grid) {
    QStringList rows;
    for (int r = 0; r < grid->rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < grid->columnCount(); ++c) {
            cells << grid->item(r, c)->text();
        }
        rows << cells.join(QStringLiteral(" | "));
    }
    return rows;
}

QStringList JsonRows(const QJsonArray& matrix, int sigFigs) {
    QStringList rows;
    for (const auto& row : matrix) {
        QStringList cells;
        for (const auto& cell : row.toArray()) {
            cells << Format(cell.toDouble(), sigFigs);
        }
        rows << cells.join(QStringLiteral(" | "));
    }
    return rows;
}

const char* const kViewNames[] = {"cmdViewCircuit", "cmdViewCurrent", "cmdViewVoltage",
                                  "cmdViewPower"};
const char* const kLabelKeys[] = {"value", "current", "voltage", "power"};

// Two nodes joined by three columns with one device each (kind,value).
QString ThreeColumns(const QString& left, const QString& middle, const QString& right) {
    return "7\r\n80,80,240,80\r\n240,80,400,80\r\n80,80,80,240\r\n240,80,240,240\r\n"
           "400,80,400,240\r\n80,240,240,240\r\n240,240,400,240\r\n3\r\n80,160," +
           left + "\r\n240,160," + middle + "\r\n400,160," + right + "\r\n0\r\n";
}

} // namespace

class AnalysisStepsTest : public QObject {
    Q_OBJECT

    QTemporaryDir work_;

    QString Write(const QString& name, const QString& text) const {
        const QString path = work_.path() + "/" + name;
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(text.toUtf8());
        return path;
    }

    // Compares everything the window shows of the solved circuit with the batch tool's answer.
    void CompareWithCli(Session& s, const QString& path, int sigFigs, const QString& shots) {
        const QJsonObject cli = CliSolve(path, sigFigs);
        QCOMPARE(cli[QStringLiteral("status")].toString(), QStringLiteral("solved"));
        for (int view = 0; view < 4; ++view) {
            s.Press(kViewNames[view]);
            const ampora::DiagramLabels labels = s.Labels();
            QStringList shown;
            QStringList expected;
            for (const auto& element : cli[QStringLiteral("elements")].toArray()) {
                const QJsonObject e = element.toObject();
                const auto slot = static_cast<std::size_t>(e[QStringLiteral("slot")].toInt());
                shown << QString::fromStdString(labels.Values.at(slot).Text);
                expected << e[QStringLiteral("labels")]
                                .toObject()[QString::fromLatin1(kLabelKeys[view])]
                                .toString();
            }
            QCOMPARE(shown, expected);
            if (view == 3) {
                QCOMPARE(s.window->StepStatusText(),
                         " Power in = " + Format(cli["power_in"].toDouble(), sigFigs) +
                             " watts, Power out = " + Format(cli["power_out"].toDouble(), sigFigs) +
                             " watts.  ");
            }
            if (!shots.isEmpty()) {
                s.Shoot(shots + "_view" + QString::number(view));
            }
        }
        const QJsonArray captions = cli[QStringLiteral("captions")].toArray();
        for (int index = 1; index <= 7; ++index) {
            if (index == 2) {
                continue;
            }
            const auto* caption =
                s.InEquations<QLabel>(qPrintable(QStringLiteral("lblEqnText%1").arg(index)));
            QCOMPARE(caption->text(), captions[index - 1].toString());
            QCOMPARE(!caption->isHidden(), !caption->text().isEmpty());
        }
        QCOMPARE(s.InEquations<QPlainTextEdit>("txtCounting")->toPlainText(),
                 cli["counting"].toString().replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
        const int unknowns = static_cast<int>(cli[QStringLiteral("unknowns")].toArray().size());
        if (unknowns > 1) {
            QCOMPARE(GridRows(s.InEquations<QTableWidget>("grdMatrix")),
                     JsonRows(cli["matrix"].toArray(), sigFigs));
            QCOMPARE(GridRows(s.InEquations<QTableWidget>("grdRREF")),
                     JsonRows(cli["rref"].toArray(), sigFigs));
            QStringList solutions;
            for (const auto& name : cli[QStringLiteral("unknowns")].toArray()) {
                for (const auto& node : cli[QStringLiteral("nodes")].toArray()) {
                    if (node.toObject()["name"] == name) {
                        solutions << name.toString() + " | " +
                                         Format(node.toObject()["voltage"].toDouble(), sigFigs);
                    }
                }
            }
            QCOMPARE(GridRows(s.InEquations<QTableWidget>("grdSolutions")), solutions);
        }
        QCOMPARE(!s.InEquations<QLabel>("picEquations1")->isHidden(), unknowns > 0);
    }

  private slots:
    void initTestCase() { QVERIFY(work_.isValid()); }

    void everyExampleGoesFromTheDrawingToViewsThatMatchTheBatchTool() {
        const QStringList examples = QDir(QStringLiteral(AMPORA_SOURCE_DIR "/examples"))
                                         .entryList({QStringLiteral("*.amq")}, QDir::Files);
        QVERIFY(examples.size() >= 6);
        for (const QString& name : examples) {
            Session s;
            const QString path = ExamplePath(name);
            s.Open(path);
            QCOMPARE(s.Panel(), QStringLiteral("picToolBox"));
            s.Press("cmdNext1");
            QCOMPARE(s.Panel(), QStringLiteral("picStep2"));
            QCOMPARE(s.window->StepStatusText(),
                     QStringLiteral(" Step 2: Click a node's label to name it.  Unnamed nodes "
                                    "are marked [ ]  "));
            QVERIFY(!s.Find<QToolBar>("Toolbar")->isEnabled());
            s.Press("cmdAutoName1");
            const QString shots = QFileInfo(name).baseName();
            if (!shots.isEmpty()) {
                s.Shoot(shots + "_step2");
            }
            QVERIFY(!s.Equations()->isVisible());
            QVERIFY(!s.Find<QAction>("mnuFilePrint")->isEnabled());
            s.Press("cmdNext2");
            QVERIFY2(s.prompts.messages.empty(), qPrintable(name));
            QCOMPARE(s.Panel(), QStringLiteral("picStep3"));
            QCOMPARE(
                s.window->StepStatusText(),
                QStringLiteral(" Step 3: Click a button above or click a tab on the report.  "));
            QVERIFY(s.Equations()->isVisible());
            QVERIFY(s.Find<QAction>("mnuFilePrint")->isEnabled());
            // The names AutoName gave are the names the batch tool gives.
            QStringList cliNames;
            const QJsonObject cli = CliSolve(path, 3);
            for (const auto& node : cli[QStringLiteral("nodes")].toArray()) {
                cliNames << node.toObject()["name"].toString();
            }
            QCOMPARE(s.NodeNames(), cliNames);
            CompareWithCli(s, path, 3, shots);
            if (!shots.isEmpty()) {
                auto* tabs = s.InEquations<QTabWidget>("tabEquations");
                tabs->setCurrentIndex(0);
                s.ShootEquations(shots + "_equations_counting");
                tabs->setCurrentIndex(1);
                s.ShootEquations(shots + "_equations_solutions");
            }
            // More figures: labels, totals, captions and grids follow at once.
            s.window->mnuSF_Click(6);
            CompareWithCli(s, path, 6, QString());
        }
    }

    void theViewButtonsPutTheirTextAndTheTotalsInTheStatusBar() {
        Session s;
        s.Open(ExamplePath("supernode.amq"));
        s.Press("cmdNext1");
        s.Press("cmdNext2");
        QStringList seen;
        for (const char* view : kViewNames) {
            s.Press(view);
            seen << s.window->StatusText() + "|" + s.window->StepStatusText();
        }
        const QString step3 = " Step 3: Click a button above or click a tab on the report.  ";
        QCOMPARE(seen, QStringList({" Viewing: circuit element values |" + step3,
                                    " Viewing: currents in amperes |" + step3,
                                    " Viewing: voltages in volts |" + step3,
                                    " Viewing: output power in watts | Power in = 12.5 watts, "
                                    "Power out = 12.5 watts.  "}));
    }

    // The power totals and a hint share the status bar: at every width each keeps its own
    // place, the totals whole, the hint cut off at its own edge rather than drawn over them.
    void theStatusTextsNeverOverprintAtAnyWidth() {
        Session s;
        s.Open(ExamplePath("two_supernodes.amq"));
        s.Press("cmdNext1");
        s.Press("cmdAutoName1");
        s.Press("cmdNext2");
        s.Press("cmdViewPower");
        QStatusTipEvent tip(QStringLiteral(
            " Number of significant figures used to display answers, and a good deal more "
            "text than any status bar panel has room for "));
        QCoreApplication::sendEvent(s.window.get(), &tip);
        auto* totals = s.Find<QLabel>("StatusPanel1");
        auto* hint = s.Find<QLabel>("StatusBar1");
        QStringList seen;
        for (const int width : {1000, 760, 560}) {
            s.window->resize(width, 600);
            QCoreApplication::processEvents();
            const QRect a = totals->geometry();
            const QRect b = hint->geometry();
            const bool whole = a.width() >= totals->fontMetrics().horizontalAdvance(totals->text());
            seen << QStringLiteral("%1: %2 %3 %4")
                        .arg(s.window->width())
                        .arg(a.intersects(b) ? "overlap" : "apart")
                        .arg(whole ? "totals whole" : "totals cut")
                        .arg(b.right() <= s.window->statusBar()->width() ? "hint inside"
                                                                         : "hint beyond");
        }
        QCOMPARE(seen, QStringList({"1000: apart totals whole hint inside",
                                    "760: apart totals whole hint inside",
                                    "560: apart totals whole hint inside"}));
    }

    // At every size the equations tab's page holds all it shows, and its scroll bars reach
    // exactly to the page's edges: nothing cut off, no empty room to scroll into.
    void theEquationsTabScrollsOverExactlyWhatItShowsAtEverySize() {
        // One window throughout: a circuit of one unknown after one of three, and back.
        QStringList wrong;
        Session s;
        for (const char* example :
             {"two_supernodes.amq", "voltage_divider.amq", "two_supernodes.amq"}) {
            s.Open(ExamplePath(QString::fromLatin1(example)));
            s.Press("cmdNext1");
            s.Press("cmdAutoName1");
            s.Press("cmdNext2");
            auto* tabs = s.InEquations<QTabWidget>("tabEquations");
            tabs->setCurrentIndex(1);
            auto* scroll = s.InEquations<QScrollArea>("scrollEquations");
            QCoreApplication::processEvents();
            if (scroll->verticalScrollBar()->value() != 0) {
                wrong << QString::fromLatin1(example) + ": opens scrolled down";
            }
            if (scroll->horizontalScrollBar()->maximum() != 0) {
                wrong << QString::fromLatin1(example) + ": opens too narrow for its equations";
            }
            for (const QSize size : {QSize(900, 900), QSize(420, 200), QSize(1400, 300)}) {
                s.Equations()->resize(size);
                QCoreApplication::processEvents();
                QWidget* page = scroll->widget();
                int bottom = 0;
                int right = 0;
                for (QWidget* child : page->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                    if (child->isVisible()) {
                        bottom = std::max(bottom, child->geometry().bottom() + 1);
                        right = std::max(right, child->geometry().right() + 1);
                    }
                }
                const QSize view = scroll->viewport()->size();
                const QString where = QStringLiteral("%1 at %2x%3: ")
                                          .arg(QString::fromLatin1(example))
                                          .arg(size.width())
                                          .arg(size.height());
                if (page->height() < bottom || page->width() < right) {
                    wrong << where + "page cuts off what it shows";
                }
                if (scroll->verticalScrollBar()->maximum() !=
                    std::max(0, page->height() - view.height())) {
                    wrong << where + "vertical scroll bar";
                }
                if (scroll->horizontalScrollBar()->maximum() !=
                    std::max(0, page->width() - view.width())) {
                    wrong << where + "horizontal scroll bar";
                }
                if (page->height() > std::max(view.height(), bottom + 40)) {
                    wrong << where + QStringLiteral("empty room below: page %1, shown %2")
                                         .arg(page->height())
                                         .arg(bottom);
                }
            }
            scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
            s.Press("cmdPrev3");
            s.Press("cmdPrev2");
        }
        QCOMPARE(wrong, QStringList());
    }

    void goingBackHidesTheEquationsAndKeepsTheNames() {
        Session s;
        s.Open(ExamplePath("wheatstone_bridge.amq"));
        s.Press("cmdNext1");
        s.Press("cmdAutoName1");
        const QStringList named = s.NodeNames();
        s.Press("cmdNext2");
        s.Press("cmdViewPower");
        s.Press("cmdPrev3");
        QCOMPARE(s.Panel(), QStringLiteral("picStep2"));
        QVERIFY(!s.Equations()->isVisible());
        QCOMPARE(s.window->StepStatusText(),
                 QStringLiteral(" Step 2: Click the label of a node to give it a name.  Unamed "
                                "ones are marked [ ]  "));
        QCOMPARE(s.workspace.ViewMode, std::int16_t(0));
        QVERIFY(!s.Find<QAction>("mnuFilePrint")->isEnabled());
        s.Press("cmdPrev2");
        QCOMPARE(s.Panel(), QStringLiteral("picToolBox"));
        QCOMPARE(s.window->StepStatusText(), QStringLiteral(" Step 1: Edit the circuit. "));
        QVERIFY(s.Labels().Nodes.empty());
        QVERIFY(s.Find<QToolBar>("Toolbar")->isEnabled());
        s.Press("cmdNext1");
        QCOMPARE(s.NodeNames(), named);
        s.Press("cmdAutoName2");
        QCOMPARE(s.NodeNames(), QStringList(named.size(), QStringLiteral("[ ]")));
        s.Press("cmdAutoName1");
        QCOMPARE(s.NodeNames(), named);
        s.Press("cmdNext2");
        QVERIFY(s.Equations()->isVisible());
        // A new circuit ends the results and the equations window with them.
        s.window->findChild<QAction*>(QStringLiteral("mnuFileNew"))->trigger();
        QCOMPARE(s.Panel(), QStringLiteral("picToolBox"));
        QVERIFY(!s.Equations()->isVisible());
    }

    void eachRefusalShowsItsMessageAtItsStepAndLeavesTheStepAsItWas() {
        struct Case {
            QString what;
            QString text;
            QString rename; // a node name to set before the step-2 move, or ""
            int refusedIn;
            QString message;
        };
        QString supernode;
        {
            QFile file(ExamplePath("supernode.amq"));
            file.open(QIODevice::ReadOnly);
            supernode = QString::fromUtf8(file.readAll());
        }
        // One refusal of each step; the core tests hold every message's text.
        const QList<Case> cases = {
            {"nothing drawn", "0\r\n0\r\n0\r\n", "", 1, ""},
            {"a loose end", "2\r\n0,0,160,0\r\n80,0,80,80\r\n0\r\n0\r\n", "", 1,
             ampora::kLooseEndsMessage},
            {"duplicate names", supernode, "V2", 2, ampora::kDuplicateNamesMessage},
            {"a short circuit through current sources", ThreeColumns("7,1", "8,1", "7,2"), "", 2,
             ampora::kCannotSolveMessage},
        };
        for (const Case& c : cases) {
            Session s;
            s.Open(Write("case.amq", c.text));
            s.Press("cmdNext1");
            if (c.refusedIn == 2) {
                QCOMPARE(s.Panel(), QStringLiteral("picStep2"));
                if (c.text.startsWith(QStringLiteral("7\r\n"))) {
                    s.Press("cmdAutoName1"); // the three-column circuits come unnamed
                }
                if (!c.rename.isEmpty()) {
                    // The first node takes the second one's name.
                    s.workspace.circuit.NodeLabels[1].Name = c.rename.toStdString();
                }
                s.Press("cmdNext2");
            }
            const QString expectedPanel = c.refusedIn == 1 ? "picToolBox" : "picStep2";
            QVERIFY2(s.Panel() == expectedPanel, qPrintable(c.what));
            QCOMPARE(int(s.workspace.Step), c.refusedIn);
            QString shown = QString::fromStdString(
                s.prompts.messages.empty() ? std::string() : s.prompts.messages[0]);
            shown.remove(QRegularExpression(QStringLiteral("^\\(!\\) ")));
            QCOMPARE(shown, c.message);
            QVERIFY2(s.prompts.messages.size() <= 1, qPrintable(c.what));
            QVERIFY(!s.Equations()->isVisible());
        }
    }

    void stepTwoNumbersTheMisreadDevicesBesideTheDrawing() {
        QFile file(ExamplePath("voltage_divider.amq"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        // The left 2000-ohm resistor becomes a source of 0 A, and a battery sits on a corner.
        text.replace(QStringLiteral("240,160,5,2000"), QStringLiteral("240,160,7,0"));
        text.replace(QStringLiteral("4\r\n160,80"), QStringLiteral("5\r\n400,240,3,1.5\r\n160,80"));
        for (const QString& circuit : {text, ExamplePath("voltage_divider.amq")}) {
            Session s;
            s.Open(circuit.endsWith(QStringLiteral(".amq")) ? circuit
                                                            : Write("misread.amq", circuit));
            s.Press("cmdNext1");
            QCOMPARE(s.Panel(), QStringLiteral("picStep2"));
            const auto* note = s.Find<QLabel>("lblDrawingWarnings");
            QVERIFY(note != nullptr && note->isVisible());
            if (circuit == text) {
                QCOMPARE(note->text(),
                         QStringLiteral("1. The battery of 1.5 V at (400, 240) lies where wires "
                                        "meet, so it belongs to no branch and is treated as "
                                        "wire.\n\n2. The current source of 0 A at (240, 160): a "
                                        "current source of 0 A is analysed as a plain wire; give "
                                        "it a value or erase it."));
                s.Shoot("misread_step2");
            } else {
                QCOMPARE(note->text(), QString());
            }
        }
    }

    void aSupernodesBatteryLooksTheSameOnEveryEntryToStep2() {
        Session s;
        s.Open(ExamplePath("supernode.amq"));
        const ampora::Element& battery = s.workspace.circuit.Elements[1];
        QVERIFY(ampora::IsBattery(battery.Kind));
        const auto picture = [&] {
            const QRect box(static_cast<int>(battery.X) - 16, static_cast<int>(battery.Y) - 16, 32,
                            32);
            return s.window->canvas()->grab(box).toImage();
        };
        s.Press("cmdNext1");
        const QImage first = picture();
        s.Press("cmdAutoName1");
        s.Press("cmdNext2");
        QCOMPARE(s.Panel(), QStringLiteral("picStep3"));
        s.Press("cmdPrev3");
        s.Press("cmdPrev2");
        s.Press("cmdNext1");
        QCOMPARE(s.Panel(), QStringLiteral("picStep2"));
        QCOMPARE(picture(), first);
    }

    void clickingANodesNameOpensTheRenameDialogBesideIt() {
        Session s(true);
        ampora::test::DialogAnswerer answers;
        s.Open(ExamplePath("voltage_divider.amq"));
        s.Press("cmdNext1");
        const ampora::DiagramLabels labels = s.Labels();
        QVERIFY(labels.Nodes.size() > 2);
        const ampora::LabelBox box = labels.Nodes[2].Box;
        const QRect label =
            QRect(s.window->canvas()->mapToGlobal(QPoint(int(box.Left), int(box.Top))),
                  QSize(int(box.Width), int(box.Height)));
        // Where the input dialog stands when it shows.
        struct ShowWatcher : QObject {
            QRect at;
            bool eventFilter(QObject* watched, QEvent* event) override {
                if (event->type() == QEvent::Show &&
                    watched->objectName() == QStringLiteral("CustomInputBox")) {
                    at = static_cast<QWidget*>(watched)->frameGeometry();
                }
                return false;
            }
        } watcher;
        qApp->installEventFilter(&watcher);
        answers.Type(QStringLiteral("Vout"));
        const QPoint centre(int(box.Left + box.Width / 2), int(box.Top + box.Height / 2));
        QTest::mouseClick(s.window->canvas(), Qt::LeftButton, {}, centre);
        QVERIFY(answers.Idle());
        QCOMPARE(answers.seen.value(0).left(15), QStringLiteral("Enter new name:"));
        QCOMPARE(s.NodeNames().value(1), QStringLiteral("Vout"));
        qApp->removeEventFilter(&watcher);
        const QRect dialogAt = watcher.at;
        QVERIFY(!dialogAt.isNull());
        QVERIFY2(!dialogAt.intersects(label), qPrintable(QStringLiteral("dialog %1,%2 label %3,%4")
                                                             .arg(dialogAt.x())
                                                             .arg(dialogAt.y())
                                                             .arg(label.x())
                                                             .arg(label.y())));
        // In step 3 a name is no longer a button.
        s.Press("cmdAutoName1");
        s.Press("cmdNext2");
        QTest::mouseClick(s.window->canvas(), Qt::LeftButton, {}, centre);
        QVERIFY(answers.seen.size() == 1);
    }

    void thePrintReportItemAsksForTheReportOnlyInStep3() {
        Session s;
        QSignalSpy asked(s.window.get(), &ampora::ui::MainWindow::ReportRequested);
        s.Open(ExamplePath("current_source.amq"));
        s.window->ShowReport();
        QCOMPARE(asked.count(), 0);
        s.Press("cmdNext1");
        s.Press("cmdNext2");
        s.Find<QAction>("mnuFilePrint")->trigger();
        QCOMPARE(asked.count(), 1);
    }

    void theReportGetsTheDiagramAndTheEquationPicturesAsImages() {
        Session s;
        s.Open(ExamplePath("two_supernodes.amq"));
        s.Press("cmdNext1");
        s.Press("cmdAutoName1");
        s.Press("cmdNext2");
        s.workspace.ViewMode = 1;
        const QImage diagram = ampora::ui::CircuitPaint(s.workspace, 1);
        QVERIFY(!diagram.isNull());
        // Cropped to the circuit: its wires span 640 by 160 units, its labels a little more.
        QVERIFY2(diagram.width() >= 640 && diagram.width() < 800 && diagram.height() >= 160 &&
                     diagram.height() < 300,
                 qPrintable(QStringLiteral("%1x%2").arg(diagram.width()).arg(diagram.height())));
        const QImage first = s.Equations()->Picture(1);
        const QImage collected = s.Equations()->Picture(2);
        QVERIFY(!first.isNull() && !collected.isNull());
        // Three equations, each a stacked fraction or more tall.
        QVERIFY(first.height() > 3 * 30);
        // A larger font set makes larger pictures.
        s.window->mnuF_Click(4);
        QVERIFY(s.Equations()->Picture(1).height() > first.height());
        const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            diagram.save(QString::fromLocal8Bit(dir) + "/two_supernodes_report_diagram.png");
        }
    }
};

QTEST_MAIN(AnalysisStepsTest)
#include "analysis_steps_test.moc"
