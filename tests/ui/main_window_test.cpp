#include "../support/memory_settings_store.h"
#include "dialog_answerer.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/edit_commands.h"
#include "ui/main_window.h"

#include <QClipboard>
#include <QImage>
#include <QMimeData>

#include <QCheckBox>
#include <QFile>
#include <QFrame>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QtTest>
#include <functional>
#include <vector>

using ampora::test::DialogAnswerer;

namespace {

QByteArray FileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString ExamplePath(const QString& name) {
    return QStringLiteral(AMPORA_SOURCE_DIR "/examples/") + name;
}

// One window with its own workspace, the real dialogs and settings store, and file
// dialogs answered by the test.
struct Session {
    ampora::Workspace workspace;
    ampora::test::ScriptedFileDialogs files;
    std::unique_ptr<ampora::ui::MainWindow> window;
    DialogAnswerer answers;

    Session() {
        ampora::ui::WindowPorts ports;
        ports.dialogs = &files;
        window = std::make_unique<ampora::ui::MainWindow>(workspace, ports);
        window->resize(900, 700);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }
    // The instructions lie over the middle of the canvas until OK is clicked.
    void DismissInstructions() const {
        auto* ok = window->findChild<QPushButton*>(QStringLiteral("cmdOKInstruct1"));
        if (ok->isVisible()) {
            QTest::mouseClick(ok, Qt::LeftButton);
        }
    }
    ampora::ui::Canvas* canvas() const { return window->canvas(); }
    QAction* Action(const char* name) const {
        return window->findChild<QAction*>(QString::fromLatin1(name));
    }
    void ClickTool(int button) const {
        auto* toolbar = window->findChild<QToolBar*>(QStringLiteral("Toolbar"));
        QWidget* widget =
            toolbar->widgetForAction(Action(QByteArray("Tool" + QByteArray::number(button))));
        QTest::mouseClick(widget, Qt::LeftButton);
    }
    void Drag(QPoint from, QPoint to) const {
        QTest::mousePress(canvas(), Qt::LeftButton, {}, from);
        QTest::mouseMove(canvas(), (from + to) / 2);
        QTest::mouseMove(canvas(), to);
        QTest::mouseRelease(canvas(), Qt::LeftButton, {}, to);
    }
    void Click(QPoint at) const { QTest::mouseClick(canvas(), Qt::LeftButton, {}, at); }
    // A key pressed in the window, which the closed dialogs may have left inactive.
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        canvas()->setFocus();
        QTest::keyClick(canvas(), key, modifiers);
    }
    QString Dump() const {
        return QString::fromStdString(ampora::CircuitFileText(workspace.circuit));
    }
    void Shoot(const QString& name) const {
        const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
        if (!dir.isEmpty()) {
            window->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
        }
    }
};

// Draws the circuit of an example file with the mouse alone: every wire with the Wire tool,
// every device with its tool and its value typed (negative for a reversed direction).
void DrawWithTheMouse(Session& s, const ampora::Circuit& circuit) {
    s.ClickTool(1);
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const ampora::Wire& w = circuit.Wires[slot];
        s.Drag(QPoint(int(w.X1), int(w.Y1)), QPoint(int(w.X2), int(w.Y2)));
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const ampora::Element& e = circuit.Elements[slot];
        const int tool = ampora::IsBattery(e.Kind) ? 2 : ampora::IsResistor(e.Kind) ? 3 : 4;
        const bool reversed = e.Kind == 2 || e.Kind == 4 || e.Kind == 8 || e.Kind == 10;
        s.ClickTool(tool);
        s.answers.Type((reversed ? "-" : "") + QString::number(double(e.Value)));
        s.Click(QPoint(int(e.X), int(e.Y)));
    }
}

// The example's text without its node labels, which only step 2 makes.
QString WithoutNodes(const QString& path) {
    ampora::Circuit circuit;
    ampora::LoadFromIniFile(circuit, path.toStdString());
    circuit.NumNodes = 0;
    return QString::fromStdString(ampora::CircuitFileText(circuit));
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

    QTemporaryDir settingsDir_;
    QTemporaryDir work_;

    QString SettingsFile() const { return settingsDir_.path() + "/Ampora/Ampora.ini"; }

  private slots:
    void initTestCase() {
        // Never the user's own settings.
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settingsDir_.path());
    }
    void init() { QFile::remove(SettingsFile()); }

    void theEmptyWindowShowsItsInstructionsTipsAndTexts() {
        Session s;
        QCOMPARE(s.window->windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
        QCOMPARE(s.window->StatusText(),
                 QStringLiteral(" To begin, select the first tool (the Wire Tool), then click and "
                                "drag to create a horizontal or vertical segment of wire "));
        QVERIFY(s.window->findChild<QFrame*>(QStringLiteral("frInstruct1"))->isVisible());
        QStringList tips;
        for (int i = 1; i <= 8; ++i) {
            tips << s.Action(QByteArray("Tool" + QByteArray::number(i)))->toolTip();
        }
        QCOMPARE(tips.join('|'), QStringLiteral("Wire Tool|Battery Tool|Resistor Tool|Current "
                                                "Source Tool|Number Tool|Move / Stretch Tool|Erase "
                                                "Tool|Undo Erase Tool"));
        QVERIFY(!s.Action("Tool8")->isEnabled());
        QCOMPARE(s.Action("mnuFileSaveAs")->text(), QStringLiteral("Save the circuit &as ..."));
        QCOMPARE(s.Action("mnuFileSaveAs")->shortcut(),
                 QKeySequence(QStringLiteral("Ctrl+Shift+S")));
        QCOMPARE(s.Action("mnuSF3")->isChecked(), true);
        QCOMPARE(s.Action("mnuF3")->isChecked(), true);
        QCOMPARE(s.Action("mnuAName1")->isChecked(), true);
        // A hint stays once the pointer has rested on a toolbar button.
        auto* toolbar = s.window->findChild<QToolBar*>(QStringLiteral("Toolbar"));
        QTest::mouseMove(toolbar->widgetForAction(s.Action("Tool3")));
        QCOMPARE(s.window->StatusText(),
                 QStringLiteral(" Resistor Tool.  When selected, click on a wire segment to "
                                "create a resistor. "));
        s.Shoot(QStringLiteral("empty_window"));
        auto* ok = s.window->findChild<QPushButton*>(QStringLiteral("cmdOKInstruct1"));
        QTest::mouseClick(ok, Qt::LeftButton);
        QVERIFY(!s.window->findChild<QFrame*>(QStringLiteral("frInstruct1"))->isVisible());
        // F1 opens the help window on its first page.
        s.canvas()->setFocus();
        QTest::keyClick(s.canvas(), Qt::Key_F1);
        bool helpShown = false;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            helpShown = helpShown || (top->inherits("ampora::ui::HelpWindow") && top->isVisible());
        }
        QVERIFY(helpShown);
    }

    void everyExampleCanBeDrawnWithTheMouseSavedAndReopenedToTheSameBytes_data() {
        QTest::addColumn<QString>("name");
        for (const char* name : {"voltage_divider", "wheatstone_bridge", "current_source",
                                 "supernode", "two_supernodes", "t_junctions"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }
    void everyExampleCanBeDrawnWithTheMouseSavedAndReopenedToTheSameBytes() {
        QFETCH(QString, name);
        const QString example = ExamplePath(name + ".amq");
        ampora::Circuit reference;
        QVERIFY(ampora::LoadFromIniFile(reference, example.toStdString()).complete);
        Session s;
        s.window->resize(900, 600);
        s.DismissInstructions();
        DrawWithTheMouse(s, reference);
        QVERIFY(s.answers.Idle());
        QCOMPARE(s.Dump(), WithoutNodes(example));
        s.Shoot(name);

        const QString saved = work_.path() + "/" + name + ".amq";
        s.files.answers = {saved.toStdString()};
        s.Action("mnuFileSaveAs")->trigger();
        QCOMPARE(s.window->windowTitle(), "DC Ampora - " + saved);
        const QByteArray bytes = FileBytes(saved);
        QCOMPARE(QString::fromLatin1(bytes), WithoutNodes(example));

        s.answers.seen.clear();
        s.Action("mnuFileNew")->trigger(); // saved: no question
        QCOMPARE(s.answers.seen, QStringList());
        QCOMPARE(ampora::CountLiveWires(s.workspace.circuit), 0);
        QCOMPARE(s.window->windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
        QCOMPARE(s.Action("mnuRecentFile1")->text(), saved);
        s.Action("mnuRecentFile1")->trigger();
        QCOMPARE(s.Dump(), WithoutNodes(example));
        s.files.answers = {saved.toStdString()};
        s.Action("mnuFileSave")->trigger();
        QCOMPARE(FileBytes(saved), bytes);
    }

    void invalidNegativeAndCancelledAnswersFollowTheRules() {
        Session s;
        s.DismissInstructions();
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(400, 80));
        s.Drag(QPoint(80, 80), QPoint(80, 300));
        s.ClickTool(3);
        s.answers.Type(QStringLiteral("-5"));
        s.answers.Press(QMessageBox::Ok);
        s.Click(QPoint(140, 81));
        s.ClickTool(2);
        s.answers.Type(QStringLiteral("-9"));
        s.Click(QPoint(240, 80));
        s.ClickTool(4);
        s.answers.Escape();
        s.Click(QPoint(80, 200));
        s.ClickTool(2);
        s.answers.Type(QStringLiteral("volts"));
        s.answers.Press(QMessageBox::Ok);
        s.Click(QPoint(336, 80));
        s.ClickTool(5);
        s.answers.Type(QStringLiteral("-9"));
        s.Click(QPoint(240, 80)); // back to its first direction
        QVERIFY(s.answers.Idle());
        QCOMPARE(s.answers.seen.join('\n'),
                 QStringLiteral("Enter the resistance in ohms: [0]\n"
                                "Ampora: Warning: Invalid entry.  Resistance changed to 0.\n"
                                "A negative value reverses the battery direction.\nEnter the "
                                "battery voltage in volts. [0]\n"
                                "A negative value reverses the current source direction.\nEnter "
                                "the current source current in amperes. [0]\n"
                                "A negative value reverses the battery direction.\nEnter the "
                                "battery voltage in volts. [0]\n"
                                "Ampora: Warning: Invalid entry.  Battery voltage changed to 0.\n"
                                "A negative value reverses the battery direction.\nEnter the "
                                "battery voltage in volts. [9]"));
        QCOMPARE(s.Dump(), QStringLiteral("2\r\n80,80,400,80\r\n80,80,80,296\r\n4\r\n"
                                          "136,80,6,0\r\n240,80,3,9\r\n80,200,7,0\r\n"
                                          "336,80,3,0\r\n0\r\n"));
    }

    void devicesMoveAndWireEndsStretchWithTheMouse() {
        Session s;
        s.DismissInstructions();
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        s.Drag(QPoint(240, 80), QPoint(240, 240));
        s.ClickTool(3);
        s.answers.Type(QStringLiteral("100"));
        s.Click(QPoint(160, 80));
        s.ClickTool(6);
        // Grab the resistor 4 units left of its centre and drop it on the vertical wire.
        QTest::mousePress(s.canvas(), Qt::LeftButton, {}, QPoint(156, 82));
        QTest::mouseMove(s.canvas(), QPoint(200, 120));
        QTest::mouseMove(s.canvas(), QPoint(236, 162));
        s.Shoot(QStringLiteral("dragging_a_device"));
        QTest::mouseRelease(s.canvas(), Qt::LeftButton, {}, QPoint(236, 162));
        QCOMPARE(s.Dump(), QStringLiteral("2\r\n80,80,240,80\r\n240,80,240,240\r\n1\r\n"
                                          "240,160,5,100\r\n0\r\n"));
        // Over the wire's lower end the pointer shows that it can be stretched.
        QTest::mouseMove(s.canvas(), QPoint(242, 238));
        QTRY_COMPARE(s.canvas()->cursor().shape(), Qt::SizeVerCursor);
        s.Drag(QPoint(242, 238), QPoint(238, 400));
        QCOMPARE(s.Dump(), QStringLiteral("2\r\n80,80,240,80\r\n240,80,240,400\r\n1\r\n"
                                          "240,240,5,100\r\n0\r\n"));
        QTest::mouseMove(s.canvas(), QPoint(160, 160));
        QTRY_COMPARE(s.canvas()->cursor().shape(), Qt::ArrowCursor);
    }

    void eraseAndUndoEraseWithTheMouse() {
        Session s;
        s.DismissInstructions();
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(320, 80));
        s.Drag(QPoint(80, 80), QPoint(80, 240));
        s.ClickTool(2);
        s.answers.Type(QStringLiteral("12"));
        s.Click(QPoint(128, 80));
        s.ClickTool(3);
        s.answers.Type(QStringLiteral("1k"));
        s.answers.Press(QMessageBox::Ok);
        s.Click(QPoint(240, 80));
        const QString drawn = s.Dump();
        s.ClickTool(7);
        s.Click(QPoint(180, 81)); // on the wire between the devices
        QCOMPARE(s.Dump(), QStringLiteral("1\r\n80,80,80,240\r\n0\r\n0\r\n"));
        QVERIFY(s.Action("Tool8")->isEnabled());
        s.ClickTool(8);
        QCOMPARE(s.Dump(), drawn);
        QVERIFY(!s.Action("Tool8")->isEnabled());
        QVERIFY(s.Action("Tool7")->isChecked());
        s.Click(QPoint(128, 80)); // the battery's picture
        QCOMPARE(ampora::CountLiveElements(s.workspace.circuit), 1);
        s.ClickTool(1); // another tool ends the chance to undo
        QVERIFY(!s.Action("Tool8")->isEnabled());
        // Keys a user might press do no harm.
        QTest::keyClick(s.canvas(), Qt::Key_Delete);
        QTest::keyClick(s.canvas(), Qt::Key_Escape);
        QCOMPARE(ampora::CountLiveElements(s.workspace.circuit), 1);
    }

    // Every kind of edit, each named in the menu, then Ctrl+Z back to the empty canvas and
    // Ctrl+Shift+Z or Ctrl+Y forward again, each key bringing back the drawing of its step.
    void undoAndRedoKeysWalkThroughADrawingSessionOfEveryEdit() {
        Session s;
        s.DismissInstructions();
        const auto typed = [&s](int tool, const char* text, QPoint at) {
            s.ClickTool(tool);
            s.answers.Type(QString::fromLatin1(text));
            s.Click(at);
        };
        const std::vector<std::pair<QString, std::function<void()>>> edits = {
            {"Draw wire",
             [&] {
                 s.ClickTool(1), s.Drag({80, 80}, {320, 80});
             }},
            {"Draw wire",
             [&] {
                 s.Drag({80, 80}, {80, 240});
             }},
            {"Place battery",
             [&] {
                 typed(2, "12", {128, 80});
             }},
            {"Place resistor",
             [&] {
                 typed(3, "47", {80, 160});
             }},
            {"Change battery value",
             [&] {
                 typed(5, "-6", {128, 80});
             }},
            {"Move battery",
             [&] {
                 s.ClickTool(6), s.Drag({128, 80}, {240, 80});
             }},
            {"Stretch wire",
             [&] {
                 s.Drag({320, 80}, {400, 80});
             }},
            {"Erase resistor",
             [&] {
                 s.ClickTool(7), s.Click({80, 160});
             }},
            {"Undo Erase", [&] { s.ClickTool(8); }},
            {"Center the circuit", [&] { s.Action("mnuCenter")->trigger(); }},
        };
        QAction* undo = s.Action("mnuUndo");
        QAction* redo = s.Action("mnuRedo");
        QStringList drawings = {s.Dump()};
        for (const auto& [name, edit] : edits) {
            edit();
            QVERIFY2(s.Dump() != drawings.last(), qPrintable(name));
            drawings << s.Dump();
            QCOMPARE(undo->text(), "&Undo " + name);
        }
        s.Shoot(QStringLiteral("every_kind_of_edit"));
        for (auto k = edits.size(); k > 0; --k) {
            s.Key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(s.Dump(), drawings[qsizetype(k - 1)]);
        }
        QVERIFY(!undo->isEnabled());
        for (std::size_t k = 1; k <= edits.size(); ++k) {
            QCOMPARE(redo->text(), "&Redo " + edits[k - 1].first);
            s.Key(k % 2 == 0 ? Qt::Key_Y : Qt::Key_Z,
                  k % 2 == 0 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
            QCOMPARE(s.Dump(), drawings[qsizetype(k)]);
        }
        // Open starts an empty history; step 2 undoes its names only.
        s.answers.Press(QMessageBox::No);
        s.files.answers = {ExamplePath(QStringLiteral("wheatstone_bridge.amq")).toStdString()};
        s.Action("mnuFileOpen")->trigger();
        QVERIFY(!undo->isEnabled() && !redo->isEnabled());
        QTest::mouseClick(s.window->findChild<QPushButton*>(QStringLiteral("cmdNext1")),
                          Qt::LeftButton);
        const QString found = s.Dump();
        QTest::mouseClick(s.window->findChild<QPushButton*>(QStringLiteral("cmdAutoName2")),
                          Qt::LeftButton);
        QCOMPARE(undo->text(), QStringLiteral("&Undo Clear Names"));
        s.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(s.Dump(), found);
        QVERIFY(!undo->isEnabled());
    }

    // The drawing for a page: on the clipboard as an image and SVG, in a file as SVG with its
    // labels as text or as a PNG of 300 dpi.
    void theDrawingIsCopiedAndExportedAsAPicture() {
        Session s;
        s.DismissInstructions();
        QVERIFY(!s.Action("mnuExportDrawing")->isEnabled());
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(320, 80));
        s.ClickTool(2);
        s.answers.Type(QStringLiteral("1.5"));
        s.Click(QPoint(200, 80));
        s.Action("mnuCopyDrawing")->trigger();
        const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
        QVERIFY(copied != nullptr);
        QVERIFY(copied->hasImage());
        QVERIFY(copied->data(QStringLiteral("image/svg+xml")).contains("1.5 V</text>"));
        QString answer;
        s.window->editCommands()->SetExportPathAsker([&answer] { return answer; });
        for (const char* name : {"drawing.svg", "drawing.png"}) {
            answer = work_.path() + "/" + name;
            s.Action("mnuExportDrawing")->trigger();
        }
        QVERIFY(FileBytes(work_.path() + "/drawing.svg").contains("1.5 V</text>"));
        const QImage png(work_.path() + "/drawing.png");
        QCOMPARE(png.dotsPerMeterX(), 11811);
        QCOMPARE(png.dotsPerMeterY(), 11811);
        answer = work_.path() + "/drawing.jpg";
        s.answers.Press(QMessageBox::Ok);
        s.Action("mnuExportDrawing")->trigger();
        QVERIFY(!QFile::exists(answer));
        QCOMPARE(s.answers.seen.last(),
                 QStringLiteral("Ampora: The drawing can be exported as SVG (.svg) or PNG (.png): "
                                "end the file's name with one of these."));
    }

    void newAsksToSaveOnlyWhenTheDrawingChanged() {
        Session s;
        s.DismissInstructions();
        s.Action("mnuFileNew")->trigger();
        QCOMPARE(s.answers.seen, QStringList());
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        s.answers.Press(QMessageBox::No);
        s.Action("mnuFileNew")->trigger();
        QCOMPARE(s.answers.seen, QStringList{QStringLiteral(
                                     "Ampora: The circuit has changed.  Do you want to save the "
                                     "changes?")});
        QCOMPARE(ampora::CountLiveWires(s.workspace.circuit), 0);
        QCOMPARE(s.window->StatusText(),
                 QStringLiteral(" Wire Tool.  When selected, click and drag to create a "
                                "horizontal or vertical segment of wire. "));
        QVERIFY(!s.Action("Tool1")->isChecked());
        s.ClickTool(8); // New can be undone
        QCOMPARE(ampora::CountLiveWires(s.workspace.circuit), 1);
        // Yes on an untitled drawing opens Save As.
        const QString path = work_.path() + "/asked.amq";
        s.files.answers = {path.toStdString()};
        s.answers.Press(QMessageBox::Yes);
        s.window->activateWindow(); // the closed message box took the activation along
        QVERIFY(QTest::qWaitForWindowActive(s.window.get()));
        s.canvas()->setFocus();
        QTest::keyClick(s.canvas(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(s.answers.seen.size(), 2);
        QCOMPARE(FileBytes(path), QByteArray("1\r\n80,80,240,80\r\n0\r\n0\r\n"));
    }

    void aDamagedFileOpensWithWhatWasReadSaysWhereItStoppedAndIsLeftAlone() {
        Session s;
        s.DismissInstructions();
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        const QString damaged = work_.path() + "/damaged.amq";
        const QByteArray bytes("2\r\n0,0,80,0\r\n0,0,zero,0\r\n");
        QFile file(damaged);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        s.answers.Press(QMessageBox::No);
        s.answers.Press(QMessageBox::Ok);
        s.files.answers = {damaged.toStdString()};
        s.Action("mnuFileOpen")->trigger();
        QCOMPARE(s.answers.seen.last(),
                 "Ampora: The file " + damaged +
                     " could not be read whole (line 3: wire 2 X2 is not a finite "
                     "single-precision number: \"zero\"). What was read before that line is "
                     "open; the file stays as it is unless you save the circuit.");
        QCOMPARE(s.Dump(), QStringLiteral("1\r\n0,0,80,0\r\n0\r\n0\r\n"));
        QCOMPARE(s.window->windowTitle(), "DC Ampora - " + damaged);
        // Left as it opened, the drawing is not offered for saving over the file.
        const qsizetype asked = s.answers.seen.size();
        QTest::keyClick(s.canvas(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(s.answers.seen.size(), asked);
        QCOMPARE(FileBytes(damaged), bytes);
    }

    void saveAsIntoAVanishedFolderSaysSoAndKeepsTheDrawingAndItsCaption() {
        Session s;
        s.DismissInstructions();
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        const QString target = work_.path() + "/vanished/x.amq";
        s.files.answers = {target.toStdString()};
        s.answers.Press(QMessageBox::Ok);
        s.Action("mnuFileSaveAs")->trigger();
        QCOMPARE(s.answers.seen, QStringList{"Ampora: The circuit could not be saved as " + target +
                                             ". No such file or directory."});
        QCOMPARE(s.window->windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
        QCOMPARE(s.Dump(), QStringLiteral("1\r\n80,80,240,80\r\n0\r\n0\r\n"));
        QVERIFY(!QFile::exists(target));
    }

    void preferencesAreWrittenAtCloseAndReadAtTheNextStart() {
        {
            Session s;
            QVERIFY(!QFile::exists(SettingsFile()));
            QVERIFY(!s.Action("mnuReportRowOperations")->isChecked());
            QVERIFY(!s.Action("mnuFileExportMatrix")->isEnabled());
            s.Action("mnuReportRowOperations")->trigger();
            QVERIFY(s.workspace.preferences.ReportRowOperations);
            s.Action("mnuSF5")->trigger();
            s.Action("mnuF1")->trigger();
            s.Action("mnuAName2")->trigger();
            s.window->findChild<QCheckBox*>(QStringLiteral("chkInstructions"))->setChecked(true);
            s.window->resize(800, 600);
            s.window->move(40, 30);
            QVERIFY(s.window->close());
        }
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, "Ampora", "Ampora");
        QCOMPARE(settings.value("Parameters/SigFigs").toString(), QStringLiteral("5"));
        QCOMPARE(settings.value("Parameters/Instructions").toString(), QStringLiteral("False"));
        Session s;
        QCOMPARE(s.workspace.preferences.SigFigs, 5);
        QVERIFY(s.Action("mnuSF5")->isChecked());
        QVERIFY(!s.Action("mnuSF3")->isChecked());
        QVERIFY(s.Action("mnuF1")->isChecked());
        QVERIFY(s.Action("mnuAName2")->isChecked());
        QVERIFY(!s.window->findChild<QFrame*>(QStringLiteral("frInstruct1"))->isVisible());
        QVERIFY(s.Action("mnuReportRowOperations")->isChecked());
        QVERIFY(s.workspace.preferences.ReportRowOperations);
    }

    void aCorruptSettingsStoreFallsBackToTheDefaults() {
        QDir().mkpath(settingsDir_.path() + "/Ampora");
        QFile file(SettingsFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Parameters]\nSigFigs=many\nFontIndex=77\nAutoNameIndex=a, b\n"
                   "Instructions=@Invalid()\nForm1%20Width=wide\n"
                   "[Recent%20Files]\nRecentFile1=/no/such/file.amq\n\x01\xff garbage\n");
        file.close();
        Session s;
        QCOMPARE(s.workspace.preferences.SigFigs, 3);
        QCOMPARE(s.workspace.preferences.FontIndex, 3);
        QCOMPARE(s.workspace.preferences.AutoNamePattern, 1);
        QVERIFY(s.Action("mnuF3")->isChecked());
        // The recent file that has gone is refused and the list keeps it.
        s.answers.Press(QMessageBox::Ok);
        s.Action("mnuRecentFile1")->trigger();
        QCOMPARE(s.answers.seen, QStringList{QStringLiteral("Ampora: File no longer exists.")});
        QCOMPARE(s.Action("mnuRecentFile1")->text(), QStringLiteral("/no/such/file.amq"));
        QVERIFY(s.window->close());
    }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
