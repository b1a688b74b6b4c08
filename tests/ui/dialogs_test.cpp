// The smaller windows: the About box, the input dialog, File > New practice circuit..., the
// help window, and what the program makes of its command line.

#include "ui/about_box.h"
#include "ui/application.h"
#include "ui/help_window.h"
#include "ui/input_dialog.h"
#include "ui/install_paths.h"
#include "ui/practice_dialog.h"
#include "ui_test.h"
#include "workflow/step_transitions.h"

#include <QDialogButtonBox>
#include <QScreen>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>

using ampora::ui::HelpWindow;
using ampora::ui::InputBox2;

namespace {

const QString kIndexTopic = QStringLiteral("index.htm");
const QString kTheoryTopic = QStringLiteral("dc cct help/theory.htm");

// Every link (or, with images, every picture) of the page shown, in reading order.
QStringList OnPage(const QTextBrowser& browser, bool images) {
    QStringList found;
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (images && format.isImageFormat()) {
                found << format.toImageFormat().name();
            } else if (!images && format.isAnchor() && !format.anchorHref().isEmpty()) {
                found << format.anchorHref();
            }
        }
    }
    return found;
}

// Clicks, as a user would, the first link of the page whose address ends with target.
bool ClickLink(QTextBrowser& browser, const QString& target) {
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.charFormat().anchorHref().endsWith(target)) {
                QTextCursor cursor(browser.document());
                cursor.setPosition(fragment.position() + fragment.length() / 2);
                browser.setTextCursor(cursor);
                browser.ensureCursorVisible();
                QTest::mouseClick(browser.viewport(), Qt::LeftButton, {},
                                  browser.cursorRect(cursor).center());
                return true;
            }
        }
    }
    return false;
}

void SetCounts(QDialog* dialog, int nodes, int superNodes, int sources) {
    dialog->findChild<QSpinBox*>(QStringLiteral("spnNodes"))->setValue(nodes);
    dialog->findChild<QSpinBox*>(QStringLiteral("spnSuperNodes"))->setValue(superNodes);
    dialog->findChild<QSpinBox*>(QStringLiteral("spnSources"))->setValue(sources);
}

QPushButton* OkButton(QDialog* dialog) {
    return dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT

  private slots:
    void theAboutBoxShowsTheProgramAndClosesWithItsOneButton() {
        QWidget owner;
        owner.show();
        QStringList seen;
        // The box runs its own event loop; the click has to come from inside it.
        QTimer::singleShot(0, [&seen] {
            QWidget* box = QApplication::activeModalWidget();
            QVERIFY(box != nullptr);
            const QImage icon =
                box->findChild<QLabel*>(QStringLiteral("picIcon"))->pixmap().toImage();
            // The drawing, not an empty square: the centre of the icon is painted.
            QVERIFY(icon.size() == QSize(64, 64) && qAlpha(icon.pixel(32, 32)) > 0);
            seen << box->windowTitle()
                 << box->findChild<QLabel*>(QStringLiteral("lblProductName"))->text()
                 << box->findChild<QLabel*>(QStringLiteral("lblVersion"))->text();
            for (QPushButton* button : box->findChildren<QPushButton*>()) {
                seen << button->objectName() + " " + button->text();
            }
            QTest::mouseClick(box->findChild<QPushButton*>(), Qt::LeftButton);
        });
        ampora::ui::ShowAboutBox(&owner);
        QCOMPARE(seen, QStringList({"About DC Ampora", "DC Ampora", "Version " AMPORA_TEST_VERSION,
                                    "Command1 OK"}));
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    // Typing replaces the selected default; Enter at once keeps it; Escape gives nothing.
    void theInputDialogAnswersWithWhatWasTyped() {
        ampora::test::DialogAnswerer answers;
        answers.Type(QStringLiteral("47"));
        answers.Type(QString());
        answers.Escape();
        QStringList returned;
        for (int k = 0; k < 3; ++k) {
            returned << InputBox2(nullptr, QStringLiteral("Enter the resistance in ohms:"),
                                  QStringLiteral("12.5"), QPoint(100, 100));
        }
        QCOMPARE(returned, QStringList({"47", "12.5", ""}));
        QCOMPARE(answers.seen.value(0), QStringLiteral("Enter the resistance in ohms: [12.5]"));
        // A position off the screen is brought back onto it.
        QPoint where;
        answers.Type(QString());
        QTimer::singleShot(0, [&where] { where = QApplication::activeModalWidget()->pos(); });
        InputBox2(nullptr, QStringLiteral("p"), QStringLiteral("1"), QPoint(50000, 50000));
        QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(where));
    }

    void aPracticeShapeThatCannotBeMadeIsToldAndCannotBeAccepted() {
        ampora::ui::PracticeDialog dialog({3, 0, 1});
        const struct {
            int nodes, superNodes, sources;
            const char* refusal;
        } rows[] = {
            {3, 0, 1, ""},
            {3, 2, 1,
             "3 nodes hold at most 1 supernode: a supernode joins two nodes of its own by a "
             "battery."},
            {2, 0, 4, "A circuit of 2 nodes has room for at most 2 current sources."},
            {10, 3, 4, ""},
        };
        for (const auto& row : rows) {
            SetCounts(&dialog, row.nodes, row.superNodes, row.sources);
            QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblRefusal"))->text(),
                     QString::fromUtf8(row.refusal));
            QCOMPARE(OkButton(&dialog)->isEnabled(), *row.refusal == '\0');
        }
        SetCounts(&dialog, 1, 5, 9); // the spin boxes hold to the limits
        const ampora::PracticeShape shape = dialog.Shape();
        QCOMPARE(QList<int>({shape.Nodes, shape.SuperNodes, shape.Sources}), QList<int>({2, 3, 4}));
    }

    void aPracticeCircuitOpensUntitledInStep1WithTheCountsAsked() {
        ampora::test::Session s(ampora::test::Session::RealPrompts);
        for (const ampora::PracticeShape shape :
             {ampora::PracticeShape{4, 1, 1}, ampora::PracticeShape{10, 2, 3}}) {
            const bool drawn = s.workspace.circuit.NumWires > 0;
            QTimer::singleShot(50, [&] {
                auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                QVERIFY(dialog != nullptr);
                SetCounts(dialog, shape.Nodes, shape.SuperNodes, shape.Sources);
                ampora::test::Shoot(dialog, QStringLiteral("practice_dialog"));
                QTest::mouseClick(OkButton(dialog), Qt::LeftButton);
                // The circuit before, if drawn, is untitled: New asks first, and No drops it.
                if (drawn) {
                    s.answers.Press(QMessageBox::No);
                }
            });
            s.Find("mnuFilePractice")->trigger();
            QCOMPARE(s.window->windowTitle(), QStringLiteral("DC Ampora - [untitled]"));
            QCOMPARE(s.workspace.Step, ampora::kStepEdit);
            ampora::Workspace copy = s.workspace;
            QCOMPARE(ampora::LeaveStep1(copy, s.prompts), ampora::TransitionResult::Entered);
            QCOMPARE(int(copy.circuit.NumNodes), shape.Nodes);
        }
        QCOMPARE(s.answers.seen, QStringList{"Ampora: The circuit has changed.  Do you want to "
                                             "save the changes?"});
    }

    void theHelpPagesLinkToEachOtherAndEveryLinkAndPictureHolds() {
        HelpWindow window(ampora::ui::HelpDir());
        window.show();
        window.ShowTopic(kIndexTopic);
        QTextBrowser& browser = *window.Browser();
        QStringList titles = {window.windowTitle()};
        QVERIFY(ClickLink(browser, QStringLiteral("theory.htm")));
        titles << window.windowTitle() + " " + browser.source().fileName();
        QVERIFY(ClickLink(browser, QStringLiteral("index.htm")));
        titles << window.windowTitle() + " " + browser.source().fileName();
        QCOMPARE(titles, QStringList({"DC Ampora Help - Help with the program",
                                      "DC Ampora Help - Help with electricity and math theory.htm",
                                      "DC Ampora Help - Help with the program index.htm"}));
        for (const QString& topic : {kIndexTopic, kTheoryTopic}) {
            window.ShowTopic(topic);
            const QUrl page = browser.source();
            const QStringList links = OnPage(browser, false);
            const QStringList images = OnPage(browser, true);
            QVERIFY2(!links.isEmpty() && images.size() >= 2, qPrintable(topic));
            for (const QString& name : images) {
                const QImage image = QImage::fromData(
                    browser.loadResource(QTextDocument::ImageResource, QUrl(name)).toByteArray());
                QVERIFY2(image.width() > 100, qPrintable(topic + ": " + name));
            }
            for (const QString& link : links) {
                const QUrl target = page.resolved(QUrl(link));
                QVERIFY2(QFileInfo(target.toLocalFile()).isFile(), qPrintable(topic + ": " + link));
                if (target.hasFragment()) {
                    browser.setSource(target);
                    QVERIFY2(browser.document()->toHtml().contains("name=\"" + target.fragment()),
                             qPrintable(topic + ": " + link));
                }
            }
        }
    }

    void aMissingHelpFolderIsSaidInTheOneHelpWindow() {
        QTemporaryDir empty;
        HelpWindow window(empty.path() + "/help");
        window.ShowTopic(kTheoryTopic);
        const QString text = window.Browser()->toPlainText();
        QVERIFY2(text.startsWith(QStringLiteral("Help page not found")) &&
                     text.contains(empty.path() + "/help/dc cct help/theory.htm"),
                 qPrintable(text));
        QCOMPARE(window.windowTitle(), QStringLiteral("DC Ampora Help"));
        // The menu reuses its window.
        QWidget owner;
        ampora::ui::ShowHelpTopic(&owner, kIndexTopic);
        ampora::ui::ShowHelpTopic(&owner, kTheoryTopic);
        const auto windows = owner.findChildren<HelpWindow*>();
        QCOMPARE(windows.size(), 1);
        QVERIFY(windows.at(0)->isVisible());
        QVERIFY(windows.at(0)->Browser()->source().path().endsWith(QStringLiteral("/theory.htm")));
    }

    // The file the desktop hands over opens by its full path; a name typed in a terminal is
    // taken from the folder the program was started in.
    void theCommandLineNamesTheFileToOpen() {
        const QString bridge = QStringLiteral("/home/student/circuits/my bridge.amq");
        const struct {
            QStringList arguments;
            QString file;
        } cases[] = {
            {{}, {}},
            {{"ampora"}, {}},
            {{"ampora", ""}, {}},
            {{"ampora", bridge}, bridge},
            {{"ampora", "file:///home/student/circuits/my%20bridge.amq"}, bridge},
            {{"ampora", "a.amq"}, QDir::current().absoluteFilePath(QStringLiteral("a.amq"))},
        };
        for (const auto& c : cases) {
            QCOMPARE(ampora::ui::CircuitFileFromArguments(c.arguments), c.file);
        }
        // Installed, the program finds its files beside its binary; in the build folder it
        // reads the source tree.
        QTemporaryDir prefix;
        QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("share/ampora/help")) &&
                QDir(prefix.path()).mkpath(QStringLiteral("bin")));
        const QString bin = prefix.path() + "/bin";
        QCOMPARE(ampora::ui::ShippedDir(bin, QStringLiteral("help")),
                 prefix.path() + "/share/ampora/help");
        QCOMPARE(ampora::ui::ShippedDir(bin, QStringLiteral("examples")),
                 QStringLiteral(AMPORA_SOURCE_DIR "/examples"));
    }
};

AMPORA_UI_TEST(DialogsTest);
#include "dialogs_test.moc"
