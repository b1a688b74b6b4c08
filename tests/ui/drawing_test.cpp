// Step 1 in the main window: drawing with the mouse and the keys, the value dialogs, the edit
// history, the files and the settings the window keeps.

#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "ui/edit_commands.h"
#include "ui_test.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFrame>
#include <QMimeData>
#include <QSettings>
#include <QTemporaryDir>

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

// Draws the circuit by hand: every wire, then every device with its value typed (negative
// for a reversed one). With the mouse: a tool button, a drag or a click. With the keys: a
// letter for the tool, arrows to the point (Shift for 32 units at a time), and Space.
void DrawByHand(Session& s, const ampora::Circuit& circuit, bool keys) {
    const auto to = [&s](float x, float y) {
        for (const bool across : {true, false}) {
            int units =
                int((across ? x : y) - (across ? s.canvas()->Cursor().X : s.canvas()->Cursor().Y));
            const int key = across ? (units < 0 ? Qt::Key_Left : Qt::Key_Right)
                                   : (units < 0 ? Qt::Key_Up : Qt::Key_Down);
            for (units = std::abs(units); units > 0; units -= units >= 32 ? 32 : 8) {
                s.Key(key, units >= 32 ? Qt::ShiftModifier : Qt::NoModifier);
            }
        }
    };
    keys ? s.Key(Qt::Key_W) : s.ClickTool(1);
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const ampora::Wire& w = circuit.Wires[slot];
        if (keys) {
            to(w.X1, w.Y1);
            s.Key(Qt::Key_Space);
            to(w.X2, w.Y2);
            s.Key(Qt::Key_Space);
        } else {
            s.Drag(QPoint(int(w.X1), int(w.Y1)), QPoint(int(w.X2), int(w.Y2)));
        }
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const ampora::Element& e = circuit.Elements[slot];
        const bool reversed = e.Kind == 2 || e.Kind == 4 || e.Kind == 8 || e.Kind == 10;
        const int tool = ampora::IsBattery(e.Kind) ? 2 : ampora::IsResistor(e.Kind) ? 3 : 4;
        keys ? s.Key(tool == 2 ? Qt::Key_B : tool == 3 ? Qt::Key_R : Qt::Key_I) : s.ClickTool(tool);
        s.answers.Type((reversed ? "-" : "") + QString::number(double(e.Value)));
        keys ? (to(e.X, e.Y), s.Key(Qt::Key_Space)) : s.Click(QPoint(int(e.X), int(e.Y)));
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
        for (const char* name : {"Tool1", "Tool2", "Tool3", "Tool4", "Tool5", "Tool6", "Tool7",
                                 "Tool8", "mnuSF3", "mnuF3", "mnuAName1", "mnuFileSaveAs"}) {
            QAction* a = s.Find(name);
            shown << (name[0] == 'T' ? a->toolTip() : a->text()) +
                         (a->isEnabled() ? "" : " disabled") + (a->isChecked() ? " checked" : "") +
                         " " + a->shortcut().toString();
        }
        QCOMPARE(shown.join('|'),
                 "DC Ampora - [untitled]| To begin, select the first tool (the Wire Tool), then "
                 "click and drag to create a horizontal or vertical segment of wire |Wire Tool |"
                 "Battery Tool |Resistor Tool |Current Source Tool |Number Tool |Move / Stretch "
                 "Tool |Erase Tool |Undo Erase Tool disabled |3 checked |Times Roman 12 pt "
                 "checked |V1, V2, V3, ... checked |Save the circuit &as ... Ctrl+Shift+S");
        // A hint stays once the pointer has rested on a toolbar button.
        QTest::mouseMove(s.Find<QToolBar>("Toolbar")->widgetForAction(s.Find("Tool3")));
        QCOMPARE(s.window->StatusText(),
                 " Resistor Tool.  When selected, click on a wire segment to create a resistor. ");
        QVERIFY(s.Find<QFrame>("frInstruct1")->isVisible());
        ampora::test::Shoot(s.window.get(), "empty_window");
        QTest::mouseClick(s.Find<QPushButton>("cmdOKInstruct1"), Qt::LeftButton);
        QVERIFY(!s.Find<QFrame>("frInstruct1")->isVisible());
        s.Key(Qt::Key_F1);
        const auto tops = QApplication::topLevelWidgets();
        QVERIFY(std::any_of(tops.begin(), tops.end(), [](const QWidget* w) {
            return w->inherits("ampora::ui::HelpWindow") && w->isVisible();
        }));
    }

    // Each example drawn by hand comes out as its file, is saved to the same bytes, is closed
    // without a question and opens again.
    void everyExampleIsDrawnByHandSavedAndReopened_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("keys");
        for (const char* name : {"voltage_divider", "wheatstone_bridge", "current_source",
                                 "supernode", "two_supernodes", "t_junctions"}) {
            QTest::addRow("%s with the mouse", name) << QString(name) << false;
        }
        for (const char* name : {"voltage_divider", "supernode", "two_supernodes"}) {
            QTest::addRow("%s with the keys", name) << QString(name) << true;
        }
    }
    void everyExampleIsDrawnByHandSavedAndReopened() {
        QFETCH(QString, name);
        QFETCH(bool, keys);
        const QString example = ampora::test::ExamplePath(name + ".amq");
        ampora::Circuit reference;
        QVERIFY(ampora::LoadFromIniFile(reference, example.toStdString()).complete);
        Session s(Session::RealPrompts);
        DrawByHand(s, reference, keys);
        QVERIFY(s.answers.Idle());
        QCOMPARE(s.Dump(), WithoutNodes(example));
        ampora::test::Shoot(s.window.get(), name + (keys ? "_by_keys" : ""));
        // The keys where the drawing was by keys, the menu where it was by mouse.
        const auto command = [&](const char* action, QKeyCombination key) {
            keys ? s.Key(key.key(), key.keyboardModifiers()) : s.Find(action)->trigger();
        };
        const QString saved = work_.path() + "/" + name + ".amq";
        s.files.answers = {saved.toStdString()};
        command("mnuFileSaveAs", Qt::ControlModifier | Qt::ShiftModifier | Qt::Key_S);
        QCOMPARE(s.window->windowTitle(), "DC Ampora - " + saved);
        const QByteArray bytes = FileBytes(saved);
        QCOMPARE(QString::fromLatin1(bytes), WithoutNodes(example));
        s.answers.seen.clear();
        command("mnuFileNew", Qt::ControlModifier | Qt::Key_N);
        QCOMPARE(s.answers.seen, QStringList()); // saved: no question
        QCOMPARE(ampora::CountLiveWires(s.workspace.Circuit), 0);
        QCOMPARE(s.window->windowTitle(), "DC Ampora - [untitled]");
        QCOMPARE(s.Find("mnuRecentFile1")->text(), saved);
        s.files.answers = {saved.toStdString()};
        keys ? s.Key(Qt::Key_O, Qt::ControlModifier) : s.Find("mnuRecentFile1")->trigger();
        QCOMPARE(s.Dump(), WithoutNodes(example));
        command("mnuFileSave", Qt::ControlModifier | Qt::Key_S);
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
            a.typed != nullptr ? s.answers.Type(a.typed) : s.answers.Escape();
            if (a.warned) {
                s.answers.Press(QMessageBox::Ok);
            }
            s.Click(a.at);
        }
        QVERIFY(s.answers.Idle());
        const QString seen = s.answers.seen.join('\n') + "\n\n" + s.Dump().replace("\r\n", "\n");
        QCOMPARE(seen, ampora::test::Expected("ui/value_dialogs.txt", seen));
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
                s.answers.Type(e.typed);
            }
            if (e.tool == 6) { // the pointer shows a wire end can be stretched
                QTest::mouseMove(s.canvas(), e.from + QPoint(2, 2));
                QTRY_COMPARE(s.canvas()->cursor().shape(),
                             e.name[0] == 'M' ? Qt::ArrowCursor : Qt::SizeHorCursor);
            }
            if (e.tool != 0 && e.tool != 8) {
                e.from == e.to ? s.Click(e.from) : s.Drag(e.from, e.to);
            }
            QVERIFY2(s.Dump() != drawings.last(), e.name);
            drawings << s.Dump();
            QCOMPARE(undo->text(), QString("&Undo ") + e.name);
            QCOMPARE(s.Find("Tool8")->isEnabled(), e.tool == 7); // once, after an erase
        }
        ampora::test::Shoot(s.window.get(), "every_kind_of_edit");
        const auto count = qsizetype(std::size(edits));
        for (auto k = count; k > 0; --k) {
            s.Key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(s.Dump(), drawings[k - 1]);
        }
        QVERIFY(!undo->isEnabled());
        for (qsizetype k = 1; k <= count; ++k) {
            QCOMPARE(redo->text(), QString("&Redo ") + edits[k - 1].name);
            s.Key(k % 2 == 0 ? Qt::Key_Y : Qt::Key_Z,
                  k % 2 == 0 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
            QCOMPARE(s.Dump(), drawings[k]);
        }
        // Open starts an empty history; step 2 undoes its names only.
        s.answers.Press(QMessageBox::No);
        s.files.answers = {ampora::test::ExamplePath("wheatstone_bridge.amq").toStdString()};
        s.Find("mnuFileOpen")->trigger();
        QVERIFY(!undo->isEnabled() && !redo->isEnabled());
        s.Press("cmdNext1");
        const QString found = s.Dump();
        s.Press("cmdAutoName2");
        QCOMPARE(undo->text(), "&Undo Clear Names");
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
        s.answers.Type("1.5");
        s.Click(QPoint(200, 80));
        s.Find("mnuCopyDrawing")->trigger();
        const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
        QVERIFY(copied->hasImage() && copied->data("image/svg+xml").contains("1.5 V</text>"));
        QString answer;
        s.window->editCommands()->SetExportPathAsker([&answer] { return answer; });
        for (const char* name : {"drawing.svg", "drawing.png", "drawing.jpg"}) {
            answer = work_.path() + "/" + name;
            if (answer.endsWith(".jpg")) {
                s.answers.Press(QMessageBox::Ok);
            }
            s.Find("mnuExportDrawing")->trigger();
        }
        QVERIFY(FileBytes(work_.path() + "/drawing.svg").contains("1.5 V</text>"));
        const QImage png(work_.path() + "/drawing.png");
        QCOMPARE(QSize(png.dotsPerMeterX(), png.dotsPerMeterY()), QSize(11811, 11811));
        QVERIFY(!QFile::exists(answer));
        QCOMPARE(s.answers.seen.last(), "Ampora: The drawing can be exported as SVG (.svg) or "
                                        "PNG (.png): end the file's name with one of these.");
    }

    void preferencesAreWrittenAtCloseAndReadAtTheNextStart() {
        const char* const items[] = {"mnuReportRowOperations", "mnuSF5", "mnuF1", "mnuAName2"};
        {
            Session s(Session::RealPromptsAndSettings);
            QVERIFY(!QFile::exists(SettingsFile()));
            for (const char* item : items) {
                s.Find(item)->trigger();
            }
            s.Find<QCheckBox>("chkInstructions")->setChecked(true);
            QVERIFY(s.window->close());
        }
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, "Ampora", "Ampora");
        QCOMPARE(settings.value("Parameters/SigFigs").toString() + " " +
                     settings.value("Parameters/Instructions").toString(),
                 "5 False");
        Session s(Session::RealPromptsAndSettings);
        QCOMPARE(s.workspace.Preferences.SigFigs, 5);
        QVERIFY(s.workspace.Preferences.ReportRowOperations);
        for (const char* item : items) {
            QVERIFY2(s.Find(item)->isChecked(), item);
        }
        QVERIFY(!s.Find("mnuSF3")->isChecked());
        QVERIFY(!s.Find<QFrame>("frInstruct1")->isVisible());
    }
};

AMPORA_UI_TEST(DrawingTest);
#include "drawing_test.moc"
