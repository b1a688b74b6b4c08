// The smaller windows: the input dialog, File > New practice circuit..., the
// help window, and what the program makes of its command line.

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

namespace {

void SetCounts(QWidget* dialog, int nodes, int superNodes, int sources) {
    dialog->findChild<QSpinBox*>("spnNodes")->setValue(nodes);
    dialog->findChild<QSpinBox*>("spnSuperNodes")->setValue(superNodes);
    dialog->findChild<QSpinBox*>("spnSources")->setValue(sources);
}

QPushButton* OkButton(QWidget* dialog) {
    return dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT

  private slots:
    // Enter at once keeps the default; a position off the screen is brought back onto it.
    // (Typing over it and Escape: the value dialogs of the drawing test.)
    void theInputDialogKeepsItsDefaultOnTheScreen() {
        ampora::test::DialogAnswerer answers;
        answers.Type(QString());
        QCOMPARE(ampora::ui::InputBox2(nullptr, "Ohms:", "12.5", QPoint(50000, 50000)), "12.5");
        QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(
            answers.where.last().topLeft()));
    }

    void aPracticeShapeThatCannotBeMadeIsToldAndCannotBeAccepted() {
        ampora::ui::PracticeDialog dialog({3, 0, 1});
        QStringList refusals;
        for (const QList<int>& counts : {QList<int>{3, 0, 1}, {3, 2, 1}, {2, 0, 4}, {10, 3, 4}}) {
            SetCounts(&dialog, counts[0], counts[1], counts[2]);
            const QString refusal = dialog.findChild<QLabel*>("lblRefusal")->text();
            QCOMPARE(OkButton(&dialog)->isEnabled(), refusal.isEmpty());
            refusals << refusal;
        }
        QCOMPARE(refusals, QStringList({"",
                                        "3 nodes hold at most 1 supernode: a supernode joins two "
                                        "nodes of its own by a battery.",
                                        "A circuit of 2 nodes has room for at most 2 current "
                                        "sources.",
                                        ""}));
        SetCounts(&dialog, 1, 5, 9); // the spin boxes hold to the limits
        const ampora::PracticeShape shape = dialog.Shape();
        QCOMPARE(QList<int>({shape.Nodes, shape.SuperNodes, shape.Sources}), QList<int>({2, 3, 4}));
    }

    void aPracticeCircuitOpensUntitledInStep1WithTheCountsAsked() {
        ampora::test::Session s(ampora::test::Session::RealPrompts);
        for (const ampora::PracticeShape shape : {ampora::PracticeShape{4, 1, 1}, {10, 2, 3}}) {
            const bool drawn = s.workspace.Circuit.NumWires > 0;
            QTimer::singleShot(50, [&] {
                QWidget* dialog = QApplication::activeModalWidget();
                SetCounts(dialog, shape.Nodes, shape.SuperNodes, shape.Sources);
                ampora::test::Shoot(dialog, "practice_dialog");
                QTest::mouseClick(OkButton(dialog), Qt::LeftButton);
                if (drawn) { // the circuit before is untitled: New asks, and No drops it
                    s.answers.Press(QMessageBox::No);
                }
            });
            s.Find("mnuFilePractice")->trigger();
            QCOMPARE(s.window->windowTitle(), "DC Ampora - [untitled]");
            QCOMPARE(s.workspace.Step, ampora::kStepEdit);
            ampora::Workspace copy = s.workspace;
            QCOMPARE(ampora::LeaveStep1(copy, s.prompts), ampora::TransitionResult::Entered);
            QCOMPARE(int(copy.Circuit.NumNodes), shape.Nodes);
        }
        QCOMPARE(s.answers.seen.size(), 1);
    }

    // The pages link to each other, each link to a page or anchor that is there, each picture
    // loads; the caption names the page. A missing folder is said in the window.
    void theHelpPagesHoldEveryLinkAndPicture() {
        ampora::ui::HelpWindow window(ampora::ui::HelpDir());
        QTextBrowser& browser = *window.Browser();
        QStringList captions;
        for (const QString topic : {"index.htm", "dc cct help/theory.htm"}) {
            window.ShowTopic(topic);
            captions << window.windowTitle();
            const QUrl page = browser.source();
            QStringList links;
            int pictures = 0;
            for (QTextBlock b = browser.document()->begin(); b.isValid(); b = b.next()) {
                for (auto it = b.begin(); !it.atEnd(); ++it) {
                    const QTextCharFormat format = it.fragment().charFormat();
                    if (format.isImageFormat()) {
                        const QString name = format.toImageFormat().name();
                        const QImage image = QImage::fromData(
                            browser.loadResource(QTextDocument::ImageResource, name).toByteArray());
                        QVERIFY2(image.width() > 100, qPrintable(topic + ": " + name));
                        ++pictures;
                    } else if (format.isAnchor() && !format.anchorHref().isEmpty()) {
                        links << format.anchorHref();
                    }
                }
            }
            QVERIFY2(pictures >= 2, qPrintable(topic));
            QVERIFY(
                links.join(' ').contains(topic.startsWith("index") ? "theory.htm" : "index.htm"));
            for (const QString& link : links) {
                const QUrl target = page.resolved(QUrl(link));
                browser.setSource(target);
                QVERIFY2(browser.source().toLocalFile() == target.toLocalFile() &&
                             QFileInfo(target.toLocalFile()).isFile() &&
                             (!target.hasFragment() ||
                              browser.document()->toHtml().contains("name=\"" + target.fragment())),
                         qPrintable(topic + ": " + link));
            }
        }
        QCOMPARE(captions, QStringList({"DC Ampora Help - Help with the program",
                                        "DC Ampora Help - Help with electricity and math"}));
        QTemporaryDir empty;
        ampora::ui::HelpWindow lost(empty.path());
        lost.ShowTopic("index.htm");
        const QString text = lost.Browser()->toPlainText();
        QVERIFY2(text.startsWith("Help page not found") &&
                     text.contains(empty.path() + "/index.htm"),
                 qPrintable(text));
        QCOMPARE(lost.windowTitle(), "DC Ampora Help");
        // The menu reuses its window.
        QWidget owner;
        ampora::ui::ShowHelpTopic(&owner, "index.htm");
        ampora::ui::ShowHelpTopic(&owner, "dc cct help/theory.htm");
        QCOMPARE(owner.findChildren<ampora::ui::HelpWindow*>().size(), 1);
        QVERIFY(owner.findChild<ampora::ui::HelpWindow*>()->Browser()->source().path().endsWith(
            "/theory.htm"));
    }

    // The file the desktop hands over opens by its full path; a name typed in a terminal is
    // taken from the folder the program was started in.
    void theCommandLineNamesTheFileToOpen() {
        const QString bridge = "/home/student/circuits/my bridge.amq";
        const QList<std::pair<QStringList, QString>> cases = {
            {{}, {}},
            {{"ampora"}, {}},
            {{"ampora", ""}, {}},
            {{"ampora", bridge}, bridge},
            {{"ampora", "file:///home/student/circuits/my%20bridge.amq"}, bridge},
            {{"ampora", "a.amq"}, QDir::current().absoluteFilePath("a.amq")},
        };
        for (const auto& [arguments, file] : cases) {
            QCOMPARE(ampora::ui::CircuitFileFromArguments(arguments), file);
        }
        // Installed, the program finds its files beside its binary; in the build folder it
        // reads the source tree.
        QTemporaryDir prefix;
        QVERIFY(QDir(prefix.path()).mkpath("share/ampora/help") &&
                QDir(prefix.path()).mkpath("bin"));
        QCOMPARE(ampora::ui::ShippedDir(prefix.path() + "/bin", "help"),
                 prefix.path() + "/share/ampora/help");
        QCOMPARE(ampora::ui::ShippedDir(prefix.path() + "/bin", "examples"),
                 AMPORA_SOURCE_DIR "/examples");
    }
};

AMPORA_UI_TEST(DialogsTest);
#include "dialogs_test.moc"
