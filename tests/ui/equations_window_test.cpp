// The equations window's own tabs driven as a student uses them: "Check my work" (equations
// and values typed, Check or Enter) and Row operations (its keys and buttons); the matrix file
// it keeps for other programs; and its pictures, drawn by the painter.

#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "report/equation_drawing.h"
#include "ui/equations_window.h"
#include "ui/painter_surface.h"
#include "ui/row_operations_tab.h"
#include "ui_test.h"
#include "workflow/step_transitions.h"

#include <QCheckBox>
#include <QTabWidget>
#include <QTemporaryDir>

class EquationsWindowTest : public QObject {
    Q_OBJECT

    QTemporaryDir dataHome_;
    ampora::Workspace ws_;
    std::unique_ptr<ampora::ui::EquationsWindow> window_;

    template <typename T> T* Find(const QString& name) const {
        return window_->findChild<T*>(name);
    }

    // The example solved as the main window solves it, in a new equations window or the one
    // there is.
    void Open(const char* example, bool newWindow = true) {
        ampora::test::ScriptedPrompts prompts;
        ampora::EraseWholeCircuit(ws_.Circuit);
        QVERIFY(
            ampora::LoadFromIniFile(ws_.Circuit, ampora::test::ExamplePath(example).toStdString())
                .complete);
        QCOMPARE(ampora::LeaveStep1(ws_, prompts), ampora::TransitionResult::Entered);
        QVERIFY(ampora::AutoName(ws_, prompts));
        QCOMPARE(ampora::LeaveStep2(ws_, prompts), ampora::TransitionResult::Entered);
        if (newWindow) {
            window_ = std::make_unique<ampora::ui::EquationsWindow>(ws_);
            window_->resize(760, 620);
        }
        window_->Rebuild();
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }

    // Types into a line of "Check my work" as a student does, replacing what it held, presses
    // Enter or the line's Check button, and reads the verdict.
    QString Enter(const char* what, int row, const QString& text, bool pressEnter) {
        auto* edit = Find<QLineEdit>(QString("txt%1%2").arg(what).arg(row));
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        for (const QChar c : text) {
            // Beyond ASCII the characters come from a character map or are pasted.
            c.unicode() < 128 ? QTest::keyClicks(edit, QString(c)) : edit->insert(QString(c));
        }
        pressEnter
            ? QTest::keyClick(edit, Qt::Key_Return)
            : QTest::mouseClick(Find<QPushButton>(QString("cmdCheck%1%2").arg(what).arg(row)),
                                Qt::LeftButton);
        const auto* verdict = Find<QLabel>(QString("lbl%1Verdict%2").arg(what).arg(row));
        return verdict->isVisible() ? verdict->text() : "(hidden)";
    }

  private slots:
    void initTestCase() {
        // The matrix file goes here, not among the user's files.
        qputenv("XDG_DATA_HOME", dataHome_.path().toLocal8Bit());
    }

    // Each line is named as the captions name the equations, and gives each answer typed its
    // verdict, after Enter or Check.
    void everyLineOfCheckMyWorkGetsItsVerdict() {
        Open("two_supernodes.amq");
        auto* tabs = Find<QTabWidget>("tabEquations");
        tabs->setCurrentIndex(tabs->count() - 1);
        QString seen = tabs->tabText(tabs->count() - 1) + ":";
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
        ws_.Preferences.SigFigs = 2;
        window_->Rebuild();
        seen += "\nValue 1 at two figures: " + Find<QLineEdit>("txtValue1")->text() + ": " +
                Find<QLabel>("lblValueVerdict1")->text() + "\n";
        QCOMPARE(seen, ampora::test::Expected("ui/check_my_work.txt", seen));
        // A new circuit starts with empty lines, as many as it has equations.
        Open("supernode.amq", false);
        QCOMPARE(Find<QLineEdit>("txtEquation1")->text(), QString());
        QVERIFY(Find<QLineEdit>("txtEquation2") == nullptr);
    }

    void rowOperationsWalkTheStepsByKeysAndButtons() {
        QFile file(dataHome_.path() + "/Ampora/ampora.gj");
        file.remove();
        Open("wheatstone_bridge.amq");
        auto* tab = window_->findChild<ampora::ui::RowOperationsTab*>();
        Find<QTabWidget>("tabEquations")->setCurrentWidget(tab);
        tab->setFocus();
        QStringList shown = {Find<QLabel>("lblStep")->text()};
        // Keys, then the buttons (a key of 0).
        const std::pair<int, const char*> presses[] = {
            {Qt::Key_End, ""},  {Qt::Key_Right, ""},  {Qt::Key_Left, ""},     {Qt::Key_PageUp, ""},
            {Qt::Key_Home, ""}, {Qt::Key_PageUp, ""}, {Qt::Key_PageDown, ""}, {Qt::Key_Right, ""},
            {0, "cmdLast"},     {0, "cmdPrevious"},   {0, "cmdFirst"},        {0, "cmdNext"}};
        for (const auto& [key, button] : presses) {
            key != 0 ? QTest::keyClick(tab, Qt::Key(key))
                     : QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
            tab->setFocus();
            shown << Find<QLabel>("lblStep")->text();
            QCOMPARE(Find<QPushButton>("cmdFirst")->isEnabled(), tab->Step() != 0);
        }
        QCOMPARE(shown.join(" | "), "Before the first of 4 steps | Step 4 of 4 | Step 4 of 4 | "
                                    "Step 3 of 4 | Step 2 of 4 | Before the first of 4 steps | "
                                    "Before the first of 4 steps | Step 1 of 4 | Step 2 of 4 | "
                                    "Step 4 of 4 | Step 3 of 4 | Before the first of 4 steps | "
                                    "Step 1 of 4");
        // Every step looks different from the one before it, in decimals and in fractions.
        for (const bool fractions : {false, true}) {
            Find<QCheckBox>("chkFractions")->setChecked(fractions);
            QCOMPARE(tab->FractionsShown(), fractions);
            QImage before;
            for (int step = 0; step < tab->StepCount(); ++step) {
                tab->ShowStep(step);
                QVERIFY2(!tab->Picture().isNull() && tab->Picture() != before,
                         qPrintable(QString::number(step)));
                before = tab->Picture();
                ampora::test::Shoot(window_.get(), QString("row_operations_%1").arg(step));
            }
        }
        window_->ScrollToTop(); // a new solution is read from its first step
        QCOMPARE(tab->Step(), 0);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("2\r\n0.035,-0.02,0.1\r\n-0.02,3.066666666666667E-2,"
                                            "6.666666666666667E-2\r\n"));
    }

    // The painter draws each equation, in every font set, inside the extent it reports, from
    // the print position down; the window's pictures grow with the font.
    void equationsAreDrawnInsideTheRoomTheyReport() {
        for (const std::int16_t fontIndex : {1, 2, 3, 4}) {
            QImage image(640, 480, QImage::Format_RGB32);
            image.fill(Qt::white);
            float bottom = 0;
            float widest = 0;
            {
                ampora::ui::PainterSurface surface(image);
                ampora::MarkupState state;
                state.FontIndex = fontIndex;
                surface.SetCurrentX(8);
                surface.SetCurrentY(8);
                for (const char* text :
                     {"(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0", "(Va-Vd-5)/10",
                      "(1/10+1/5)*Va-(1/10)*Vb-(1/5)*Vc=-2/5+0.5", "Vb=Va+5",
                      "(V1-0)/1000 + (V1-V2)/2.2E+03 = 0", "not an equation @ all"}) {
                    widest = std::max(widest, ampora::DrawEquation(surface, state, text).Width);
                    surface.SetCurrentY(surface.CurrentY() + 12);
                }
                bottom = surface.CurrentY();
            }
            QRect ink;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    ink |= qGray(image.pixel(x, y)) < 200 ? QRect(x, y, 1, 1) : QRect();
                }
            }
            QVERIFY2(ink.top() >= 8 && ink.bottom() <= bottom && ink.right() <= 8 + widest + 1,
                     qPrintable(QString("font %1: ink %2..%3")
                                    .arg(fontIndex)
                                    .arg(ink.top())
                                    .arg(ink.bottom())));
        }
        Open("two_supernodes.amq");
        const int height = window_->Picture(1).height();
        QVERIFY(height > 3 * 30); // three equations, each a stacked fraction or taller
        ws_.Preferences.FontIndex = 4;
        window_->Rebuild();
        QVERIFY(window_->Picture(1).height() > height && !window_->Picture(2).isNull());
    }
};

AMPORA_UI_TEST(EquationsWindowTest);
#include "equations_window_test.moc"
