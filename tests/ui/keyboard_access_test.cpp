#include "../support/memory_settings_store.h"
#include "dialog_answerer.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "editor/editor_state.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/equations_window.h"
#include "ui/main_window.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QFile>
#include <QFrame>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

using ampora::test::DialogAnswerer;

namespace {

QString ExamplePath(const QString& name) {
    return QStringLiteral(AMPORA_SOURCE_DIR "/examples/") + name;
}

struct Session {
    ampora::Workspace workspace;
    ampora::test::ScriptedFileDialogs files;
    std::unique_ptr<ampora::ui::MainWindow> window;
    DialogAnswerer answers;

    explicit Session(QSize size = QSize(1000, 760)) {
        ampora::ui::WindowPorts ports;
        ports.dialogs = &files;
        window = std::make_unique<ampora::ui::MainWindow>(workspace, ports);
        window->resize(size);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }
    ampora::ui::Canvas* canvas() const { return window->canvas(); }
    QAction* Action(const char* name) const {
        return window->findChild<QAction*>(QString::fromLatin1(name));
    }
    // Keys go where the user's would: to the widget that has the focus.
    void Key(int key, Qt::KeyboardModifiers mods = {}) const {
        if (QApplication::activeWindow() == nullptr) {
            // A closed dialog hands the activation back to the window, as the desktop would.
            window->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(window.get()));
        }
        QWidget* to =
            QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : window.get();
        QTest::keyClick(to, static_cast<Qt::Key>(key), mods);
    }
    void Letter(char letter) const { Key(Qt::Key_A + (letter - 'A')); }
    // Arrows to a grid point: Shift for 32 units at a time, then single steps.
    void CursorTo(float x, float y) const {
        const auto walk = [this](float from, float to, int less, int more) {
            int units = static_cast<int>(to - from);
            const int key = units < 0 ? less : more;
            units = std::abs(units);
            for (; units >= 32; units -= 32) {
                Key(key, Qt::ShiftModifier);
            }
            for (; units > 0; units -= 8) {
                Key(key);
            }
        };
        walk(canvas()->Cursor().X, x, Qt::Key_Left, Qt::Key_Right);
        walk(canvas()->Cursor().Y, y, Qt::Key_Up, Qt::Key_Down);
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
    void Open(const QString& path) {
        files.answers = {path.toStdString()};
        Key(Qt::Key_O, Qt::ControlModifier);
    }
};

// The example's text without its node labels, which only step 2 makes.
QString WithoutNodes(const QString& path) {
    ampora::Circuit circuit;
    ampora::LoadFromIniFile(circuit, path.toStdString());
    circuit.NumNodes = 0;
    return QString::fromStdString(ampora::CircuitFileText(circuit));
}

// Each accessible child of the canvas that is not a widget: its role and name.
QString CanvasChildren(ampora::ui::Canvas* canvas) {
    QAccessibleInterface* self = QAccessible::queryAccessibleInterface(canvas);
    QString out;
    for (int i = 0; i < self->childCount(); ++i) {
        QAccessibleInterface* child = self->child(i);
        if (child->object() == nullptr) {
            out += (child->role() == QAccessible::Button ? "button: " : "") +
                   child->text(QAccessible::Name) + "\n";
        }
    }
    return out;
}

} // namespace

class KeyboardAccessTest : public QObject {
    Q_OBJECT

    QTemporaryDir settingsDir_;
    QTemporaryDir work_;

  private slots:
    void initTestCase() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settingsDir_.path());
    }

    void escapeClosesTheInstructionsAndTheKeysThenDraw() {
        Session s;
        auto* instructions = s.window->findChild<QFrame*>(QStringLiteral("frInstruct1"));
        QVERIFY(instructions->isVisible());
        s.Key(Qt::Key_Escape);
        QVERIFY(!instructions->isVisible());
        QCOMPARE(QApplication::focusWidget(), s.canvas());
        s.Letter('W');
        QCOMPARE(s.window->editor().CurrentTool, ampora::kWireTool);
        QCOMPARE(s.window->StatusText(), " Cursor at (64, 64). Space starts a wire here. ");
        // A screen reader hears the same from the drawing itself.
        QVERIFY(QAccessible::queryAccessibleInterface(s.canvas())
                    ->text(QAccessible::Description)
                    .startsWith("Cursor at (64, 64). Space starts a wire here. Letters choose"));
        // Enter now acts on the drawing, as Space does.
        s.Key(Qt::Key_Return);
        s.Key(Qt::Key_Right, Qt::ShiftModifier);
        s.Shoot("wire_by_keys");
        s.Key(Qt::Key_Return);
        QCOMPARE(s.Dump().section("\r\n", 1, 1), QStringLiteral("64,64,96,64"));
    }

    void everyExampleCanBeDrawnWithKeysAloneSavedAndReadBack_data() {
        QTest::addColumn<QString>("name");
        for (const char* name : {"voltage_divider", "supernode", "two_supernodes"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }
    void everyExampleCanBeDrawnWithKeysAloneSavedAndReadBack() {
        QFETCH(QString, name);
        const QString example = ExamplePath(name + ".amq");
        ampora::Circuit reference;
        QVERIFY(ampora::LoadFromIniFile(reference, example.toStdString()).complete);
        Session s;
        s.Key(Qt::Key_Escape);
        s.Letter('W');
        for (int slot = 1; slot <= reference.NumWires; ++slot) {
            const ampora::Wire& w = reference.Wires[slot];
            s.CursorTo(w.X1, w.Y1);
            s.Key(Qt::Key_Space);
            s.CursorTo(w.X2, w.Y2);
            s.Key(Qt::Key_Space);
        }
        for (int slot = 1; slot <= reference.NumElements; ++slot) {
            const ampora::Element& e = reference.Elements[slot];
            const bool reversed = e.Kind == 2 || e.Kind == 4 || e.Kind == 8 || e.Kind == 10;
            s.Letter(ampora::IsBattery(e.Kind) ? 'B' : ampora::IsResistor(e.Kind) ? 'R' : 'I');
            s.CursorTo(e.X, e.Y);
            s.answers.Type((reversed ? "-" : "") + QString::number(double(e.Value)));
            s.Key(Qt::Key_Space);
        }
        QVERIFY(s.answers.Idle());
        QCOMPARE(s.Dump(), WithoutNodes(example));
        s.Shoot("keys_" + name);

        const QString saved = work_.path() + "/" + name + ".amq";
        s.files.answers = {saved.toStdString()};
        s.Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        s.Key(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(ampora::CountLiveWires(s.workspace.circuit), 0);
        s.Open(saved);
        QCOMPARE(s.Dump(), WithoutNodes(example));
    }

    void stepTwoAndThreeAnswerTheKeysAndTheReaderHearsEveryItem() {
        Session s;
        s.Key(Qt::Key_Escape);
        s.Open(ExamplePath("voltage_divider.amq"));
        s.Key(Qt::Key_N, Qt::AltModifier);
        QTRY_COMPARE(s.workspace.Step, 2);
        // Tab arrives at the drawing from the step panel.
        s.canvas()->clearFocus();
        s.canvas()->setFocus(Qt::TabFocusReason);
        QCOMPARE(s.canvas()->FocusedNode(), 1);
        s.Key(Qt::Key_Tab);
        QCOMPARE(s.canvas()->FocusedNode(), 2);
        s.Shoot("step2_tab");
        s.Key(Qt::Key_Backtab);
        QCOMPARE(s.canvas()->FocusedNode(), 1);
        s.answers.Type("A");
        s.Key(Qt::Key_Return);
        QVERIFY(s.answers.Idle());
        QCOMPARE(QString::fromStdString(s.workspace.circuit.NodeLabels[1].Name), "A");
        QCOMPARE(CanvasChildren(s.canvas()).section('\n', 11),
                 "button: Node A, at (240, 80), joining 3 wires\n"
                 "button: Node 0, the reference, at (240, 240), joining 3 wires\n");

        s.Key(Qt::Key_N, Qt::AltModifier);
        QTRY_COMPARE(s.workspace.Step, 3);
        // The equations window takes the focus; the student comes back to the drawing.
        QTRY_VERIFY(QApplication::activeWindow() != s.window.get());
        s.window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), s.window.get());
        s.Key(Qt::Key_2);
        QTRY_COMPARE(s.workspace.ViewMode, 1);
        QCOMPARE(CanvasChildren(s.canvas()),
                 "Wire from (80, 80) to (240, 80), carrying the resistor 0.006 \u2192\n"
                 "Wire from (240, 80) to (400, 80)\n"
                 "Wire from (80, 80) to (80, 240), carrying the battery \u2191 0.006\n"
                 "Wire from (240, 80) to (240, 240), carrying the resistor \u2193 0.003\n"
                 "Wire from (400, 80) to (400, 240), carrying the resistor \u2193 0.003\n"
                 "Wire from (80, 240) to (240, 240)\n"
                 "Wire from (240, 240) to (400, 240)\n"
                 "Resistor, 1000 \u03a9, from 0 to A; current 0.006 A rightward\n"
                 "Battery, 12 V, from 0 to A; current 0.006 A upward\n"
                 "Resistor, 2000 \u03a9, from A to 0; current 0.003 A downward\n"
                 "Resistor, 2000 \u03a9, from A to 0; current 0.003 A downward\n"
                 "Node A, 6 V\n"
                 "Node 0, the reference, 0 V\n");
        s.Shoot("step3_keys");
        // The equations are pictures; a reader hears them as text.
        auto* equations = s.window->equationsWindow()->findChild<QLabel*>("picEquations1");
        QCOMPARE(QAccessible::queryAccessibleInterface(equations)->text(QAccessible::Name),
                 QString::fromStdString(s.workspace.equations.FirstWritten.at(0)));
        s.Key(Qt::Key_P, Qt::AltModifier);
        QTRY_COMPARE(s.workspace.Step, 2);
    }

    void everyControlHasANameAndEveryButtonADescription() {
        Session s;
        QStringList unnamed;
        for (QWidget* widget : s.window->findChildren<QWidget*>()) {
            // Qt's own parts (the menu bar's overflow button) and the equations window's.
            if (widget->window() != s.window.get() || widget->objectName().startsWith("qt_")) {
                continue;
            }
            QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
            const bool control = qobject_cast<QAbstractButton*>(widget) != nullptr;
            if (control && (face->text(QAccessible::Name).isEmpty() ||
                            face->text(QAccessible::Description).isEmpty())) {
                unnamed << widget->objectName() + " " + widget->metaObject()->className();
            }
        }
        QCOMPARE(unnamed, QStringList());
        auto* toolbar = s.window->findChild<QToolBar*>(QStringLiteral("Toolbar"));
        QAccessibleInterface* resistor =
            QAccessible::queryAccessibleInterface(toolbar->widgetForAction(s.Action("Tool3")));
        QCOMPARE(resistor->text(QAccessible::Name), "Resistor Tool");
        QCOMPARE(resistor->text(QAccessible::Description),
                 "Resistor Tool.  When selected, click on a wire segment to create a resistor. "
                 "Key on the drawing: R.");
    }

    void theHelpPageListsEveryShortcutOfTheWindow() {
        Session s;
        QFile page(QStringLiteral(AMPORA_SOURCE_DIR "/help/index.htm"));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString html = QString::fromUtf8(page.readAll());
        const QString keys = html.section(QStringLiteral("<a name=\"keys\">"), 1);
        QStringList missing;
        QList<QKeySequence> all;
        for (const QAction* action : s.window->findChildren<QAction*>()) {
            all += action->shortcuts();
        }
        for (const QAbstractButton* button : s.window->findChildren<QAbstractButton*>()) {
            all += button->shortcut();
        }
        for (const QKeySequence& sequence : all) {
            const QString text = sequence.toString(QKeySequence::PortableText);
            if (!text.isEmpty() && !keys.contains("<td>" + text) &&
                !keys.contains(text + "</td>") && !keys.contains(text + ", ") &&
                !keys.contains("(or " + text + ")")) {
                missing << text;
            }
        }
        QCOMPARE(missing, QStringList());
    }

    void zoomShowsMoreOrLessButClicksStillLandOnTheGrid() {
        Session s;
        s.Key(Qt::Key_Escape);
        s.Letter('W');
        s.Key(Qt::Key_Plus, Qt::ControlModifier);
        s.Key(Qt::Key_Equal, Qt::ControlModifier);
        QCOMPARE(s.canvas()->Zoom(), 1.5625);
        // Where the mouse goes down and up, in canvas units, snapped as ever.
        const QPoint from = s.canvas()->ToWidget(QPointF(97, 131)).toPoint();
        const QPoint to = s.canvas()->ToWidget(QPointF(203, 129)).toPoint();
        QTest::mousePress(s.canvas(), Qt::LeftButton, {}, from);
        QTest::mouseMove(s.canvas(), to);
        QTest::mouseRelease(s.canvas(), Qt::LeftButton, {}, to);
        QCOMPARE(s.Dump().section("\r\n", 1, 1), QStringLiteral("96,128,200,128"));
        s.Key(Qt::Key_Minus, Qt::ControlModifier);
        s.Key(Qt::Key_Minus, Qt::ControlModifier);
        s.Key(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(s.canvas()->Zoom(), 0.8);
        s.Key(Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(s.canvas()->Zoom(), 2.0); // a short wire fits at its largest
    }

    void aLargeCircuitOpensWholeInASmallWindow() {
        Session s(QSize(520, 380));
        s.Key(Qt::Key_Escape);
        s.Open(ExamplePath("two_supernodes.amq"));
        QVERIFY(s.canvas()->Zoom() < 1);
        // The whole drawing, labels and all, lies in the part that the toolbar, the step panel
        // and the scroll bars leave free.
        const auto* side = s.canvas()->findChild<QScrollBar*>("canvasVerticalScroll");
        const auto* under = s.canvas()->findChild<QScrollBar*>("canvasHorizontalScroll");
        const QRect free(QPoint(0, 40),
                         QPoint(side->isVisible() ? side->x() : s.canvas()->width() - 150,
                                under->isVisible() ? under->y() : s.canvas()->height()));
        const ampora::LabelBox whole =
            ampora::DiagramExtent(s.workspace.circuit, s.canvas()->CurrentLabels());
        const QRectF shown(
            s.canvas()->ToWidget(QPointF(whole.Left, whole.Top)),
            s.canvas()->ToWidget(QPointF(whole.Left + whole.Width, whole.Top + whole.Height)));
        QVERIFY2(QRectF(free).contains(shown), qPrintable(QString("%1,%2 %3x%4")
                                                              .arg(shown.x())
                                                              .arg(shown.y())
                                                              .arg(shown.width())
                                                              .arg(shown.height())));
        s.Shoot("small_window_large_circuit");
        // The scroll bars stand where the view is, so the first touch does not jump.
        const auto* across = s.canvas()->findChild<QScrollBar*>("canvasHorizontalScroll");
        const auto* down = s.canvas()->findChild<QScrollBar*>("canvasVerticalScroll");
        const QPointF corner = s.canvas()->ToCanvas(QPointF(0, 0)) * s.canvas()->Zoom();
        QCOMPARE(across->value(), qRound(corner.x()));
        QCOMPARE(down->value(), qRound(corner.y()));
        // At its own size it is scrolled to.
        s.Key(Qt::Key_Plus, Qt::ControlModifier);
        s.Key(Qt::Key_Plus, Qt::ControlModifier);
        s.Key(Qt::Key_Plus, Qt::ControlModifier);
        auto* bar = s.canvas()->findChild<QWidget*>(QStringLiteral("canvasHorizontalScroll"));
        QVERIFY(bar->isVisible());
        s.Shoot("small_window_zoomed");
    }
};

QTEST_MAIN(KeyboardAccessTest)
#include "keyboard_access_test.moc"
