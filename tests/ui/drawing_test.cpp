// Step 1 in the main window: drawing with the mouse and the keys, the value dialogs, the edit
// history, the files and the settings the window keeps.

#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "ui/edit_commands.h"
#include "ui_test.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFrame>
#include <QImage>
#include <QMimeData>
#include <QSettings>
#include <QTemporaryDir>

using ampora::test::ExamplePath;
using ampora::test::Session;

namespace {

QByteArray FileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The example's text without its node labels, which only step 2 makes.
QString WithoutNodes(const QString& path) {
    ampora::Circuit circuit;
    ampora::LoadFromIniFile(circuit, path.toStdString());
    circuit.NumNodes = 0;
    return QString::fromStdString(ampora::CircuitFileText(circuit));
}

bool Reversed(const ampora::Element& e) {
    return e.Kind == 2 || e.Kind == 4 || e.Kind == 8 || e.Kind == 10;
}

// Draws the circuit with the mouse alone: every wire with the Wire tool, every device with its
// tool and its value typed (negative for a reversed direction).
void DrawWithTheMouse(Session& s, const ampora::Circuit& circuit) {
    s.ClickTool(1);
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const ampora::Wire& w = circuit.Wires[slot];
        s.Drag(QPoint(int(w.X1), int(w.Y1)), QPoint(int(w.X2), int(w.Y2)));
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const ampora::Element& e = circuit.Elements[slot];
        s.ClickTool(ampora::IsBattery(e.Kind) ? 2 : ampora::IsResistor(e.Kind) ? 3 : 4);
        s.answers.Type((Reversed(e) ? "-" : "") + QString::number(double(e.Value)));
        s.Click(QPoint(int(e.X), int(e.Y)));
    }
}

// The same with the keys alone: a letter for the tool, arrows to the point (Shift for 32 units
// at a time), Space to start and end a wire or to place a device.
void DrawWithTheKeys(Session& s, const ampora::Circuit& circuit) {
    const auto to = [&s](float x, float y) {
        const auto walk = [&s](float from, float to, int less, int more) {
            const int key = to < from ? less : more;
            int units = std::abs(int(to - from));
            for (; units >= 32; units -= 32) {
                s.Key(key, Qt::ShiftModifier);
            }
            for (; units > 0; units -= 8) {
                s.Key(key);
            }
        };
        walk(s.canvas()->Cursor().X, x, Qt::Key_Left, Qt::Key_Right);
        walk(s.canvas()->Cursor().Y, y, Qt::Key_Up, Qt::Key_Down);
    };
    s.Key(Qt::Key_W);
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const ampora::Wire& w = circuit.Wires[slot];
        to(w.X1, w.Y1);
        s.Key(Qt::Key_Space);
        to(w.X2, w.Y2);
        s.Key(Qt::Key_Space);
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const ampora::Element& e = circuit.Elements[slot];
        s.Key(ampora::IsBattery(e.Kind)    ? Qt::Key_B
              : ampora::IsResistor(e.Kind) ? Qt::Key_R
                                           : Qt::Key_I);
        to(e.X, e.Y);
        s.answers.Type((Reversed(e) ? "-" : "") + QString::number(double(e.Value)));
        s.Key(Qt::Key_Space);
    }
}

} // namespace

class DrawingTest : public QObject {
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

    void theFirstStartShowsTheInstructionsTipsAndDefaults() {
        Session s(Session::RealPromptsAndSettings, QSize(900, 700));
        QStringList shown = {s.window->windowTitle(), s.window->StatusText()};
        for (int i = 1; i <= 8; ++i) {
            shown << s.Find(QByteArray("Tool" + QByteArray::number(i)))->toolTip();
        }
        for (const char* name : {"Tool8", "mnuSF3", "mnuF3", "mnuAName1"}) {
            shown << QString::fromLatin1(name) + (s.Find(name)->isEnabled() ? "" : " disabled") +
                         (s.Find(name)->isChecked() ? " checked" : "");
        }
        shown << s.Find("mnuFileSaveAs")->text() + " " +
                     s.Find("mnuFileSaveAs")->shortcut().toString();
        QCOMPARE(shown,
                 QStringList({"DC Ampora - [untitled]",
                              " To begin, select the first tool (the Wire Tool), then click "
                              "and drag to create a horizontal or vertical segment of wire ",
                              "Wire Tool", "Battery Tool", "Resistor Tool", "Current Source Tool",
                              "Number Tool", "Move / Stretch Tool", "Erase Tool", "Undo Erase Tool",
                              "Tool8 disabled", "mnuSF3 checked", "mnuF3 checked",
                              "mnuAName1 checked", "Save the circuit &as ... Ctrl+Shift+S"}));
        // A hint stays once the pointer has rested on a toolbar button.
        QTest::mouseMove(s.Find<QToolBar>("Toolbar")->widgetForAction(s.Find("Tool3")));
        QCOMPARE(s.window->StatusText(), QStringLiteral(" Resistor Tool.  When selected, click on "
                                                        "a wire segment to create a resistor. "));
        auto* instructions = s.Find<QFrame>("frInstruct1");
        QVERIFY(instructions->isVisible());
        ampora::test::Shoot(s.window.get(), QStringLiteral("empty_window"));
        QTest::mouseClick(s.Find<QPushButton>("cmdOKInstruct1"), Qt::LeftButton);
        QVERIFY(!instructions->isVisible());
        // F1 opens the help window.
        s.canvas()->setFocus();
        s.Key(Qt::Key_F1);
        bool helpShown = false;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            helpShown = helpShown || (top->inherits("ampora::ui::HelpWindow") && top->isVisible());
        }
        QVERIFY(helpShown);
    }

    // Each example drawn by hand comes out as the file, is saved to the same bytes, is closed
    // without a question and opens again.
    void everyExampleIsDrawnByHandSavedAndReopened_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("keys");
        for (const char* name : {"voltage_divider", "wheatstone_bridge", "current_source",
                                 "supernode", "two_supernodes", "t_junctions"}) {
            QTest::addRow("%s with the mouse", name) << QString::fromLatin1(name) << false;
        }
        for (const char* name : {"voltage_divider", "supernode", "two_supernodes"}) {
            QTest::addRow("%s with the keys", name) << QString::fromLatin1(name) << true;
        }
    }
    void everyExampleIsDrawnByHandSavedAndReopened() {
        QFETCH(QString, name);
        QFETCH(bool, keys);
        const QString example = ExamplePath(name + ".amq");
        ampora::Circuit reference;
        QVERIFY(ampora::LoadFromIniFile(reference, example.toStdString()).complete);
        Session s(Session::RealPrompts);
        keys ? DrawWithTheKeys(s, reference) : DrawWithTheMouse(s, reference);
        QVERIFY(s.answers.Idle());
        QCOMPARE(s.Dump(), WithoutNodes(example));
        ampora::test::Shoot(s.window.get(), name + (keys ? "_by_keys" : ""));

        const QString saved = work_.path() + "/" + name + ".amq";
        s.files.answers = {saved.toStdString()};
        keys ? s.Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier)
             : s.Find("mnuFileSaveAs")->trigger();
        QCOMPARE(s.window->windowTitle(), "DC Ampora - " + saved);
        const QByteArray bytes = FileBytes(saved);
        QCOMPARE(QString::fromLatin1(bytes), WithoutNodes(example));
        s.answers.seen.clear();
        keys ? s.Key(Qt::Key_N, Qt::ControlModifier) : s.Find("mnuFileNew")->trigger();
        QCOMPARE(s.answers.seen, QStringList()); // saved: no question
        QCOMPARE(ampora::CountLiveWires(s.workspace.circuit), 0);
        QCOMPARE(s.window->windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
        if (keys) {
            s.files.answers = {saved.toStdString()};
            s.Key(Qt::Key_O, Qt::ControlModifier);
        } else {
            QCOMPARE(s.Find("mnuRecentFile1")->text(), saved);
            s.Find("mnuRecentFile1")->trigger();
        }
        QCOMPARE(s.Dump(), WithoutNodes(example));
        s.files.answers = {saved.toStdString()};
        s.Find("mnuFileSave")->trigger();
        QCOMPARE(FileBytes(saved), bytes);
    }

    void theValueDialogsTakeInvalidNegativeAndCancelledAnswers() {
        Session s(Session::RealPrompts);
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(400, 80));
        s.Drag(QPoint(80, 80), QPoint(80, 300));
        const struct {
            int tool;
            const char* typed; // nullptr: Escape
            bool warned;
            QPoint at;
        } answers[] = {{3, "-5", true, {140, 81}},
                       {2, "-9", false, {240, 80}},
                       {4, nullptr, false, {80, 200}},
                       {2, "volts", true, {336, 80}},
                       {5, "-9", false, {240, 80}}}; // back to its first direction
        for (const auto& a : answers) {
            s.ClickTool(a.tool);
            a.typed != nullptr ? s.answers.Type(QString::fromLatin1(a.typed)) : s.answers.Escape();
            if (a.warned) {
                s.answers.Press(QMessageBox::Ok);
            }
            s.Click(a.at);
        }
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

    void devicesMoveAndWireEndsStretchUnderTheirOwnPointers() {
        Session s(Session::RealPrompts);
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        s.Drag(QPoint(240, 80), QPoint(240, 240));
        s.ClickTool(3);
        s.answers.Type(QStringLiteral("100"));
        s.Click(QPoint(160, 80));
        s.ClickTool(6);
        // Grabbed 4 units left of its centre and dropped on the vertical wire.
        s.Drag(QPoint(156, 82), QPoint(236, 162));
        QCOMPARE(s.Dump(), QStringLiteral("2\r\n80,80,240,80\r\n240,80,240,240\r\n1\r\n"
                                          "240,160,5,100\r\n0\r\n"));
        QTest::mouseMove(s.canvas(), QPoint(242, 238));
        QTRY_COMPARE(s.canvas()->cursor().shape(), Qt::SizeVerCursor);
        s.Drag(QPoint(242, 238), QPoint(238, 400));
        QCOMPARE(s.Dump(), QStringLiteral("2\r\n80,80,240,80\r\n240,80,240,400\r\n1\r\n"
                                          "240,240,5,100\r\n0\r\n"));
        QTest::mouseMove(s.canvas(), QPoint(160, 160));
        QTRY_COMPARE(s.canvas()->cursor().shape(), Qt::ArrowCursor);
    }

    // Every kind of edit, each named in the menu, then Ctrl+Z back to the empty canvas and
    // Ctrl+Shift+Z or Ctrl+Y forward again, each key bringing back the drawing of its step.
    void undoAndRedoWalkThroughEveryKindOfEdit() {
        Session s(Session::RealPrompts);
        const struct {
            const char* name;
            int tool; // 0: Edit > Center the circuit
            const char* typed;
            QPoint from, to;
        } edits[] = {
            {"Draw wire", 1, nullptr, {80, 80}, {320, 80}},
            {"Draw wire", 1, nullptr, {80, 80}, {80, 240}},
            {"Place battery", 2, "12", {128, 80}, {128, 80}},
            {"Place resistor", 3, "47", {80, 160}, {80, 160}},
            {"Change battery value", 5, "-6", {128, 80}, {128, 80}},
            {"Move battery", 6, nullptr, {128, 80}, {240, 80}},
            {"Stretch wire", 6, nullptr, {320, 80}, {400, 80}},
            {"Erase resistor", 7, nullptr, {80, 160}, {80, 160}},
            {"Undo Erase", 8, nullptr, {}, {}},
            {"Center the circuit", 0, nullptr, {}, {}},
        };
        QAction* undo = s.Find("mnuUndo");
        QAction* redo = s.Find("mnuRedo");
        QStringList drawings = {s.Dump()};
        int tool = 0;
        for (const auto& e : edits) {
            if (e.tool == 0) {
                s.Find("mnuCenter")->trigger();
            } else if (e.tool != std::exchange(tool, e.tool) || e.tool == 8) {
                s.ClickTool(e.tool);
            }
            if (e.typed != nullptr) {
                s.answers.Type(QString::fromLatin1(e.typed));
            }
            if (e.tool != 0 && e.tool != 8) {
                e.from == e.to ? s.Click(e.from) : s.Drag(e.from, e.to);
            }
            QVERIFY2(s.Dump() != drawings.last(), e.name);
            drawings << s.Dump();
            QCOMPARE(undo->text(), QStringLiteral("&Undo ") + e.name);
            // Undo Erase is offered once, after an erase.
            QCOMPARE(s.Find("Tool8")->isEnabled(), e.tool == 7);
        }
        ampora::test::Shoot(s.window.get(), QStringLiteral("every_kind_of_edit"));
        const auto count = qsizetype(std::size(edits));
        for (auto k = count; k > 0; --k) {
            s.Key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(s.Dump(), drawings[k - 1]);
        }
        QVERIFY(!undo->isEnabled());
        for (qsizetype k = 1; k <= count; ++k) {
            QCOMPARE(redo->text(), QStringLiteral("&Redo ") + edits[k - 1].name);
            s.Key(k % 2 == 0 ? Qt::Key_Y : Qt::Key_Z,
                  k % 2 == 0 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
            QCOMPARE(s.Dump(), drawings[k]);
        }
        // Open starts an empty history; step 2 undoes its names only.
        s.answers.Press(QMessageBox::No);
        s.files.answers = {ExamplePath(QStringLiteral("wheatstone_bridge.amq")).toStdString()};
        s.Find("mnuFileOpen")->trigger();
        QVERIFY(!undo->isEnabled() && !redo->isEnabled());
        s.Press("cmdNext1");
        const QString found = s.Dump();
        s.Press("cmdAutoName2");
        QCOMPARE(undo->text(), QStringLiteral("&Undo Clear Names"));
        s.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(s.Dump(), found);
        QVERIFY(!undo->isEnabled());
    }

    // For a page: on the clipboard as an image and SVG, in a file as SVG with its labels as
    // text or as a PNG of 300 dpi.
    void theDrawingIsCopiedAndExportedAsAPicture() {
        Session s(Session::RealPrompts);
        QVERIFY(!s.Find("mnuExportDrawing")->isEnabled());
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(320, 80));
        s.ClickTool(2);
        s.answers.Type(QStringLiteral("1.5"));
        s.Click(QPoint(200, 80));
        s.Find("mnuCopyDrawing")->trigger();
        const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
        QVERIFY(copied != nullptr && copied->hasImage());
        QVERIFY(copied->data(QStringLiteral("image/svg+xml")).contains("1.5 V</text>"));
        QString answer;
        s.window->editCommands()->SetExportPathAsker([&answer] { return answer; });
        for (const char* name : {"drawing.svg", "drawing.png", "drawing.jpg"}) {
            answer = work_.path() + "/" + name;
            if (answer.endsWith(QStringLiteral(".jpg"))) {
                s.answers.Press(QMessageBox::Ok);
            }
            s.Find("mnuExportDrawing")->trigger();
        }
        QVERIFY(FileBytes(work_.path() + "/drawing.svg").contains("1.5 V</text>"));
        const QImage png(work_.path() + "/drawing.png");
        QCOMPARE(QSize(png.dotsPerMeterX(), png.dotsPerMeterY()), QSize(11811, 11811));
        QVERIFY(!QFile::exists(answer));
        QCOMPARE(s.answers.seen.last(),
                 QStringLiteral("Ampora: The drawing can be exported as SVG (.svg) or PNG (.png): "
                                "end the file's name with one of these."));
    }

    void newAsksToSaveOnlyAChangedDrawingAndYesSavesItAs() {
        Session s(Session::RealPrompts);
        s.Find("mnuFileNew")->trigger();
        QCOMPARE(s.answers.seen, QStringList());
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        s.answers.Press(QMessageBox::No);
        s.Find("mnuFileNew")->trigger();
        QCOMPARE(s.answers.seen, QStringList{"Ampora: The circuit has changed.  Do you want to "
                                             "save the changes?"});
        QCOMPARE(ampora::CountLiveWires(s.workspace.circuit), 0);
        QCOMPARE(s.window->StatusText(),
                 QStringLiteral(" Wire Tool.  When selected, click and drag "
                                "to create a horizontal or vertical "
                                "segment of wire. "));
        QVERIFY(!s.Find("Tool1")->isChecked());
        s.ClickTool(8); // New can be undone
        QCOMPARE(ampora::CountLiveWires(s.workspace.circuit), 1);
        const QString path = work_.path() + "/asked.amq";
        s.files.answers = {path.toStdString()};
        s.answers.Press(QMessageBox::Yes);
        s.Key(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(s.answers.seen.size(), 2);
        QCOMPARE(FileBytes(path), QByteArray("1\r\n80,80,240,80\r\n0\r\n0\r\n"));
    }

    void aDamagedFileOpensWithWhatWasReadAndIsLeftAlone() {
        Session s(Session::RealPrompts);
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        const QString damaged = work_.path() + "/damaged.amq";
        const QByteArray bytes("2\r\n0,0,80,0\r\n0,0,zero,0\r\n");
        QFile file(damaged);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        s.answers.Press(QMessageBox::No);
        s.answers.Press(QMessageBox::Ok);
        s.files.answers = {damaged.toStdString()};
        s.Find("mnuFileOpen")->trigger();
        QCOMPARE(s.answers.seen.last(),
                 "Ampora: The file " + damaged +
                     " could not be read whole (line 3: wire 2 X2 is not a finite "
                     "single-precision number: \"zero\"). What was read before that line is "
                     "open; the file stays as it is unless you save the circuit.");
        QCOMPARE(s.Dump(), QStringLiteral("1\r\n0,0,80,0\r\n0\r\n0\r\n"));
        QCOMPARE(s.window->windowTitle(), "DC Ampora - " + damaged);
        // Left as it opened, the drawing is not offered for saving over the file.
        const qsizetype asked = s.answers.seen.size();
        s.Key(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(s.answers.seen.size(), asked);
        QCOMPARE(FileBytes(damaged), bytes);
    }

    void saveAsIntoAVanishedFolderKeepsTheDrawingAndItsCaption() {
        Session s(Session::RealPrompts);
        s.ClickTool(1);
        s.Drag(QPoint(80, 80), QPoint(240, 80));
        const QString target = work_.path() + "/vanished/x.amq";
        s.files.answers = {target.toStdString()};
        s.answers.Press(QMessageBox::Ok);
        s.Find("mnuFileSaveAs")->trigger();
        QCOMPARE(s.answers.seen, QStringList{"Ampora: The circuit could not be saved as " + target +
                                             ". No such file or directory."});
        QCOMPARE(s.window->windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
        QCOMPARE(s.Dump(), QStringLiteral("1\r\n80,80,240,80\r\n0\r\n0\r\n"));
        QVERIFY(!QFile::exists(target));
    }

    void preferencesAreWrittenAtCloseAndReadAtTheNextStart() {
        {
            Session s(Session::RealPromptsAndSettings);
            QVERIFY(!QFile::exists(SettingsFile()));
            QVERIFY(!s.Find("mnuFileExportMatrix")->isEnabled());
            for (const char* item : {"mnuReportRowOperations", "mnuSF5", "mnuF1", "mnuAName2"}) {
                s.Find(item)->trigger();
            }
            s.Find<QCheckBox>("chkInstructions")->setChecked(true);
            QVERIFY(s.window->close());
        }
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, "Ampora", "Ampora");
        QCOMPARE(settings.value("Parameters/SigFigs").toString(), QStringLiteral("5"));
        QCOMPARE(settings.value("Parameters/Instructions").toString(), QStringLiteral("False"));
        Session s(Session::RealPromptsAndSettings);
        QCOMPARE(s.workspace.preferences.SigFigs, 5);
        QVERIFY(s.workspace.preferences.ReportRowOperations);
        for (const char* item : {"mnuReportRowOperations", "mnuSF5", "mnuF1", "mnuAName2"}) {
            QVERIFY2(s.Find(item)->isChecked(), item);
        }
        QVERIFY(!s.Find("mnuSF3")->isChecked());
        QVERIFY(!s.Find<QFrame>("frInstruct1")->isVisible());
    }

    void aCorruptSettingsFileFallsBackToTheDefaults() {
        QDir().mkpath(settingsDir_.path() + "/Ampora");
        QFile file(SettingsFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Parameters]\nSigFigs=many\nFontIndex=77\nAutoNameIndex=a, b\n"
                   "Instructions=@Invalid()\nForm1%20Width=wide\n"
                   "[Recent%20Files]\nRecentFile1=/no/such/file.amq\n\x01\xff garbage\n");
        file.close();
        Session s(Session::RealPromptsAndSettings);
        const ampora::Preferences& p = s.workspace.preferences;
        QCOMPARE(QList<int>({p.SigFigs, p.FontIndex, p.AutoNamePattern}), QList<int>({3, 3, 1}));
        QVERIFY(s.Find("mnuF3")->isChecked());
        // The recent file that has gone is refused and the list keeps it.
        s.answers.Press(QMessageBox::Ok);
        s.Find("mnuRecentFile1")->trigger();
        QCOMPARE(s.answers.seen, QStringList{QStringLiteral("Ampora: File no longer exists.")});
        QCOMPARE(s.Find("mnuRecentFile1")->text(), QStringLiteral("/no/such/file.amq"));
    }
};

AMPORA_UI_TEST(DrawingTest);
#include "drawing_test.moc"
