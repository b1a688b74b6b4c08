// The window without a mouse and through a screen reader: the keys of each step, the names and
// descriptions every control gives, the sentences the drawing speaks, the help page's list of
// keys, and zoom.

#include "ui/equations_window.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QFrame>
#include <QScrollBar>

using ampora::test::ExamplePath;
using ampora::test::Session;

namespace {

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

class AccessTest : public QObject {
    Q_OBJECT

  private slots:
    void escapeClosesTheInstructionsAndTheKeysThenDraw() {
        Session s(Session::Scripted, QSize(1000, 760), {{"Parameters/Instructions", "True"}});
        auto* instructions = s.Find<QFrame>("frInstruct1");
        QVERIFY(instructions->isVisible());
        s.Key(Qt::Key_Escape);
        QVERIFY(!instructions->isVisible());
        QCOMPARE(QApplication::focusWidget(), s.canvas());
        s.Key(Qt::Key_W);
        QCOMPARE(s.window->StatusText(), " Cursor at (64, 64). Space starts a wire here. ");
        // A screen reader hears the same from the drawing itself.
        QVERIFY(QAccessible::queryAccessibleInterface(s.canvas())
                    ->text(QAccessible::Description)
                    .startsWith("Cursor at (64, 64). Space starts a wire here. Letters choose"));
        // Enter acts on the drawing as Space does.
        s.Key(Qt::Key_Return);
        s.Key(Qt::Key_Right, Qt::ShiftModifier);
        s.Key(Qt::Key_Return);
        QCOMPARE(s.Dump().section("\r\n", 1, 1), QString("64,64,96,64"));
    }

    void stepsTwoAndThreeAnswerTheKeysAndTheReaderHearsEveryItem() {
        Session s(Session::RealPrompts, QSize(1000, 760));
        s.files.answers = {ExamplePath(QString("voltage_divider.amq")).toStdString()};
        s.Key(Qt::Key_O, Qt::ControlModifier);
        s.Key(Qt::Key_N, Qt::AltModifier);
        QTRY_COMPARE(s.workspace.Step, 2);
        // Tab arrives at the drawing from the step panel and walks its node names.
        s.canvas()->clearFocus();
        s.canvas()->setFocus(Qt::TabFocusReason);
        QCOMPARE(s.canvas()->FocusedNode(), 1);
        s.Key(Qt::Key_Tab);
        QCOMPARE(s.canvas()->FocusedNode(), 2);
        s.Key(Qt::Key_Backtab);
        QCOMPARE(s.canvas()->FocusedNode(), 1);
        s.answers.Type("B");
        s.Key(Qt::Key_Return);
        // A click on a node's name opens the rename dialog beside the name, not over it.
        const ampora::LabelBox box = s.canvas()->CurrentLabels().Nodes.at(1).Box;
        const QPoint name(int(box.Left + box.Width / 2), int(box.Top + box.Height / 2));
        s.answers.Type("A");
        s.Click(name);
        QVERIFY(!s.answers.where.value(1).intersects(
            QRect(s.canvas()->mapToGlobal(QPoint(int(box.Left), int(box.Top))),
                  QSize(int(box.Width), int(box.Height)))));
        QVERIFY(s.answers.Idle());
        QString spoken = s.answers.seen.join('\n') + "\nIn step 2, node 1 named A:\n" +
                         CanvasChildren(s.canvas());
        s.Key(Qt::Key_N, Qt::AltModifier);
        QTRY_COMPARE(s.workspace.Step, 3);
        // The equations window takes the focus; the student comes back to the drawing.
        QTRY_VERIFY(QApplication::activeWindow() != s.window.get());
        s.window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), s.window.get());
        s.Key(Qt::Key_2);
        QTRY_COMPARE(s.workspace.ViewMode, ampora::kViewCurrents);
        s.Click(name); // no longer a button
        QCOMPARE(s.answers.seen.size(), 2);
        spoken += "In step 3, the currents:\n" + CanvasChildren(s.canvas());
        // The equations are pictures; a reader hears them as text.
        auto* equations = s.window->equationsWindow()->findChild<QLabel*>("picEquations1");
        spoken += "The equations: " +
                  QAccessible::queryAccessibleInterface(equations)->text(QAccessible::Name) + "\n";
        QCOMPARE(spoken, ampora::test::Expected("ui/voltage_divider_spoken.txt", spoken));
        ampora::test::Shoot(s.window.get(), "step3_keys");
        s.Key(Qt::Key_P, Qt::AltModifier);
        QTRY_COMPARE(s.workspace.Step, 2);
    }

    void everyControlHasANameAndEveryButtonADescription() {
        Session s;
        QStringList unnamed;
        for (QWidget* widget : s.window->findChildren<QAbstractButton*>()) {
            // Qt's own parts (the menu bar's overflow button) and the equations window's.
            if (widget->window() != s.window.get() || widget->objectName().startsWith("qt_")) {
                continue;
            }
            QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
            if (face->text(QAccessible::Name).isEmpty() ||
                face->text(QAccessible::Description).isEmpty()) {
                unnamed << widget->objectName() + " " + widget->metaObject()->className();
            }
        }
        QCOMPARE(unnamed, QStringList());
        QAccessibleInterface* resistor = QAccessible::queryAccessibleInterface(
            s.Find<QToolBar>("Toolbar")->widgetForAction(s.Find("Tool3")));
        QCOMPARE(resistor->text(QAccessible::Name) + "|" + resistor->text(QAccessible::Description),
                 "Resistor Tool|Resistor Tool.  When selected, click on a wire segment to create a "
                 "resistor. Key on the drawing: R.");
    }

    void theHelpPageListsEveryShortcutOfTheWindow() {
        Session s;
        QFile page(QString(AMPORA_SOURCE_DIR "/help/index.htm"));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString keys = QString::fromUtf8(page.readAll()).section("<a name=\"keys\">", 1);
        QList<QKeySequence> all;
        for (const QAction* action : s.window->findChildren<QAction*>()) {
            all += action->shortcuts();
        }
        for (const QAbstractButton* button : s.window->findChildren<QAbstractButton*>()) {
            all += button->shortcut();
        }
        QStringList missing;
        for (const QKeySequence& sequence : all) {
            const QString text = sequence.toString(QKeySequence::PortableText);
            if (!text.isEmpty() && !keys.contains("<td>" + text) &&
                !keys.contains(text + "</td>") && !keys.contains(text + ", ") &&
                !keys.contains("(or " + text + ")")) {
                missing << text;
            }
        }
        QVERIFY(all.size() > 20);
        QCOMPARE(missing, QStringList());
    }

    // Ctrl and + (or =), - and 0 zoom; the mouse still lands on the grid when zoomed.
    void zoomShowsMoreOrLessButClicksStillLandOnTheGrid() {
        Session s;
        s.ClickTool(1);
        QList<qreal> zooms;
        for (const int key : {Qt::Key_Plus, Qt::Key_Equal, Qt::Key_Minus, Qt::Key_Minus,
                              Qt::Key_Minus, Qt::Key_0}) {
            s.Key(key, Qt::ControlModifier);
            zooms << s.canvas()->Zoom();
            if (zooms.size() == 2) {
                s.Drag(s.canvas()->ToWidget(QPointF(97, 131)).toPoint(),
                       s.canvas()->ToWidget(QPointF(203, 129)).toPoint());
            }
        }
        QCOMPARE(s.Dump().section("\r\n", 1, 1), "96,128,200,128");
        QCOMPARE(zooms, QList<qreal>({1.25, 1.5625, 1.25, 1.0, 0.8, 2.0})); // 0: the wire fits
    }

    void aLargeCircuitOpensWholeInASmallWindow() {
        Session s(Session::Scripted, QSize(520, 380));
        s.window->OpenFileFromDesktop(ExamplePath(QString("two_supernodes.amq")));
        QVERIFY(s.canvas()->Zoom() < 1);
        // The whole drawing, labels and all, lies in the part that the toolbar, the step panel
        // and the scroll bars leave free.
        const auto* down = s.canvas()->findChild<QScrollBar*>("canvasVerticalScroll");
        const auto* across = s.canvas()->findChild<QScrollBar*>("canvasHorizontalScroll");
        const QRect free(QPoint(0, 40),
                         QPoint(down->isVisible() ? down->x() : s.canvas()->width() - 150,
                                across->isVisible() ? across->y() : s.canvas()->height()));
        const ampora::LabelBox whole =
            ampora::DiagramExtent(s.workspace.Circuit, s.canvas()->CurrentLabels());
        const QRectF shown(
            s.canvas()->ToWidget(QPointF(whole.Left, whole.Top)),
            s.canvas()->ToWidget(QPointF(whole.Left + whole.Width, whole.Top + whole.Height)));
        QVERIFY(QRectF(free).contains(shown));
        ampora::test::Shoot(s.window.get(), QString("small_window_large_circuit"));
        // The scroll bars stand where the view is, so the first touch does not jump.
        const QPointF corner = s.canvas()->ToCanvas(QPointF(0, 0)) * s.canvas()->Zoom();
        QCOMPARE(QPoint(across->value(), down->value()), corner.toPoint());
    }
};

AMPORA_UI_TEST(AccessTest);
#include "access_test.moc"
