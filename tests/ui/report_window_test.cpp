// The report window: the report in its box, copied whole or in part with its pictures, saved
// as HTML, RTF or PDF, printed, laid out at every width, one window at a time.

#include "../support/wide_circuit.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "report/rtf_writer.h"
#include "ui/report_pictures.h"
#include "ui/report_window.h"
#include "ui_test.h"
#include "workflow/step_transitions.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QMimeData>
#include <QPrinter>
#include <QProcess>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>

using namespace ampora;
using test::ExamplePath;

namespace {

// A window holding the report of the circuit at path, solved as the main window solves it.
struct Loaded {
    Workspace ws;
    test::ScriptedPrompts prompts;
    ui::QtReportPictures pictures;
    ui::ReportWindow window{&prompts};

    explicit Loaded(const QString& path, bool shown = true) {
        EraseWholeCircuit(ws.Circuit);
        QVERIFY(LoadFromIniFile(ws.Circuit, path.toStdString()).complete);
        QCOMPARE(LeaveStep1(ws, prompts), TransitionResult::Entered);
        QCOMPARE(LeaveStep2(ws, prompts), TransitionResult::Entered);
        ws.CurrentFileName = path.toStdString();
        window.LoadReport(ws, pictures);
        if (shown) {
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
        }
    }
    QTextEdit* Box() const { return window.RichTextBox1(); }
};

// The largest example stretched to 1440 units across, written into folder.
QString WideCircuit(const QTemporaryDir& folder) {
    QFile example(ExamplePath("two_supernodes.amq"));
    QFile file(folder.filePath("wide.amq"));
    if (example.open(QIODevice::ReadOnly) && file.open(QIODevice::WriteOnly)) {
        file.write(
            QByteArray::fromStdString(test::StretchedAcross(example.readAll().toStdString(), 2)));
    }
    return file.fileName();
}

QString ClipboardRtf() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data == nullptr ? QString() : QString::fromUtf8(data->data("text/rtf"));
}

int PictureCount(const QString& rtf) {
    return int(rtf.count("{\\pict\\pngblip"));
}

} // namespace

class ReportWindowTest : public QObject {
    Q_OBJECT

  private slots:
    // The box holds the report character for character, a picture as one character, and
    // gives it, or the part selected, to the clipboard with its pictures.
    void theBoxHoldsTheReportAndCopiesItWithItsPictures() {
        // A path with an emoji, which the box counts as two positions, before everything.
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("circuits \U0001F50B"));
        const QString path = folder.filePath("circuits \U0001F50B/bridge.amq");
        QVERIFY(QFile::copy(ExamplePath("wheatstone_bridge.amq"), path));
        Loaded r(path);
        QString expected;
        for (const RichTextRun& run : r.window.Report().Runs()) {
            expected +=
                run.IsPicture()
                    ? QString(QChar::ObjectReplacementCharacter)
                    : QString::fromStdString(run.Text).replace(u'\n', QChar::ParagraphSeparator);
        }
        QCOMPARE(r.Box()->document()->toRawText(), expected);
        QCOMPARE(std::size_t(r.Box()->document()->characterCount() - 1),
                 r.window.Report().Length());
        QVERIFY(r.Box()->isReadOnly());
        const std::string whole = RtfText(r.window.Report());
        // With nothing selected the button copies the whole report, for a word processor only;
        // the keys copy a selection of all of it for every kind of program.
        QGuiApplication::clipboard()->setText("earlier contents");
        QTest::mouseClick(r.window.cmdCopyToClipboard(), Qt::LeftButton);
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->formats(), QStringList{"text/rtf"});
        QCOMPARE(ClipboardRtf().toStdString(), whole);
        QCOMPARE(PictureCount(ClipboardRtf()), 6); // two equation pictures, four diagrams
        QVERIFY(ClipboardRtf().contains("89504e470d0a1a0a")); // each a real PNG
        {
            QGuiApplication::clipboard()->setText("earlier contents");
            r.Box()->selectAll();
            QTest::keyClick(r.Box(), Qt::Key_C, Qt::ControlModifier);
            const QMimeData* data = QGuiApplication::clipboard()->mimeData();
            QCOMPARE(ClipboardRtf().toStdString(), whole);
            QCOMPARE(data->html().count("<img src=\"data:image/png;base64,"), 6);
            QVERIFY(data->text().startsWith("Ampora\n"));
            QVERIFY(data->text().contains("The electric power:"));
        }
        for (const QString& text : QStringList{
                 path, "\U0001F50B/bridge", "The circuit:", "Counting unknowns and equations:"}) {
            r.Box()->setTextCursor(r.Box()->document()->find(text));
            QTest::keyClick(r.Box(), Qt::Key_C, Qt::ControlModifier);
            QCOMPARE(QGuiApplication::clipboard()->mimeData()->text(), text);
            // The copy for a word processor ends with the same characters.
            const QString tail =
                text.contains(u'/') ? text.mid(text.lastIndexOf(u'/')) : text.right(8);
            QVERIFY2(ClipboardRtf().contains(tail + u'}'), qPrintable(tail));
        }
        // From a heading to the end of its picture's line, four paragraphs on, by the button.
        QTextCursor cursor = r.Box()->document()->find("The voltage:");
        cursor.setPosition(cursor.selectionStart());
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, 4);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        r.Box()->setTextCursor(cursor);
        r.Box()->ensureCursorVisible();
        test::Shoot(&r.window, "report_window_with_a_selection");
        QVERIFY(r.window.CopyToClipboard());
        const QString rtf = ClipboardRtf();
        QCOMPARE(rtf.toStdString(), RtfText(r.window.Report(), std::size_t(cursor.selectionStart()),
                                            std::size_t(cursor.selectionEnd())));
        QCOMPARE(PictureCount(rtf), 1);
        QVERIFY(rtf.contains("The voltage:") && !rtf.contains("The electric current:"));
    }

    // Save as... writes the format the name's extension asks for, a PDF without one; another
    // extension or a folder's name is refused with a message and nothing written. Printed to a
    // PDF file, as the print dialog offers where there is no printer, the report has the same
    // pages, with the same text on each, as the saved PDF.
    void saveAsAndPrintWriteTheFormatAsked() {
        QTemporaryDir folder;
        Loaded r(WideCircuit(folder), false);
        QString answer;
        r.window.SetSavePathAsker([&answer] { return answer; });
        const auto save = [&](const QString& name) {
            answer = name.isEmpty() ? QString() : folder.filePath(name);
            r.prompts.messages.clear();
            QTest::mouseClick(r.window.cmdSaveAs(), Qt::LeftButton);
            QFile file(folder.filePath(name));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QVERIFY(save("report.html").contains("<img src=\"data:image/png;base64,"));
        QCOMPARE(save("report.rtf").toStdString(), RtfText(r.window.Report()));
        QVERIFY(save("report.pdf").startsWith("%PDF-"));
        QVERIFY(save("summary").isEmpty());
        QVERIFY(QFile::exists(folder.filePath("summary.pdf")));
        save(QString()); // cancelled
        QVERIFY(r.prompts.messages.empty());
        save("report.doc");
        QCOMPARE(r.prompts.messages.size(), std::size_t{1});
        for (const QString name : {"in.html", "in.rtf", "in.pdf"}) {
            QVERIFY(QDir(folder.path()).mkdir(name));
            save(name);
            QCOMPARE(r.prompts.messages,
                     std::vector<std::string>{"(!) The report could not be written to " +
                                              folder.filePath(name).toStdString() +
                                              ": Is a directory."});
            QCOMPARE(QDir(folder.filePath(name))
                         .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                     true);
        }
        QCOMPARE(
            QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
            QStringList({"report.html", "report.pdf", "report.rtf", "summary.pdf", "wide.amq"}));
        const QString printed = folder.filePath("printed.pdf");
        r.window.SetPrinterAsker([&](QPrinter& printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(printed);
            return true;
        });
        r.prompts.messages.clear();
        QTest::mouseClick(r.window.cmdPrint(), Qt::LeftButton);
        QVERIFY(r.prompts.messages.empty());
        if (QStandardPaths::findExecutable("pdftotext").isEmpty()) {
            QSKIP("pdftotext is not installed");
        }
        // The text of each page as laid out on it, the pages parted by form feeds.
        const auto pages = [](const QString& pdf) {
            QProcess text;
            text.start("pdftotext", {"-layout", pdf, "-"});
            text.waitForFinished(30000);
            return QString::fromUtf8(text.readAllStandardOutput()).split(QLatin1Char('\f'));
        };
        const QStringList fromSave = pages(folder.filePath("report.pdf"));
        QVERIFY(fromSave.size() > 3); // three pages, and what follows the last form feed
        QCOMPARE(pages(printed), fromSave);
    }

    // Each picture of a circuit drawn wider than the page, at any width of the window, whole
    // on one line beside its tab, in proportion and never enlarged.
    void everyPictureIsShownWholeBesideItsTabAtAnyWidth() {
        QTemporaryDir folder;
        Loaded r(WideCircuit(folder));
        QTextDocument* document = r.Box()->document();
        for (const int width : {440, 700, 1600}) {
            r.window.resize(width, 600);
            QCoreApplication::processEvents();
            const qreal room = r.Box()->viewport()->width() - 2 * document->documentMargin();
            QTextBlock block = document->begin();
            int seen = 0;
            for (const RichTextRun& run : r.window.Report().Runs()) {
                if (!run.IsPicture()) {
                    continue;
                }
                while (!block.text().contains(QChar::ObjectReplacementCharacter)) {
                    block = block.next();
                }
                document->documentLayout()->blockBoundingRect(block);
                QTextImageFormat shown;
                for (auto it = block.begin(); !it.atEnd(); ++it) {
                    shown = it.fragment().charFormat().isImageFormat()
                                ? it.fragment().charFormat().toImageFormat()
                                : shown;
                }
                const QString where = QString("at %1 px, picture %2").arg(width).arg(++seen);
                QVERIFY2(block.layout()->lineCount() == 1 &&
                             block.layout()->lineAt(0).naturalTextWidth() <= room,
                         qPrintable(where));
                QVERIFY2(shown.width() <= run.Width &&
                             std::abs(shown.height() / shown.width() -
                                      double(run.Height) / run.Width) < 0.02,
                         qPrintable(where));
                block = block.next();
            }
            QCOMPARE(seen, 6);
            QCOMPARE(r.Box()->horizontalScrollBar()->maximum(), 0);
            test::Shoot(&r.window, QString("report_wide_%1").arg(width));
        }
    }

    // "Print report" outside step 3 does nothing; in it, one modeless window, rebuilt each
    // time, which leaves the view as it was and keeps only the last report.
    void printReportKeepsOneWindowWithTheLastReport() {
        Loaded r(ExamplePath("supernode.amq"), false);
        r.ws.ViewMode = kViewVoltages;
        QWidget owner;
        r.ws.Step = kStepName;
        QCOMPARE(ui::ShowReportWindow(&owner, r.ws, nullptr), nullptr);
        r.ws.Step = kStepResults;
        ui::ReportWindow* first = ui::ShowReportWindow(&owner, r.ws, nullptr);
        QVERIFY(first->isVisible() && !first->isModal());
        const std::size_t length = first->Report().Length();
        for (int print = 0; print < 20; ++print) {
            QCOMPARE(ui::ShowReportWindow(&owner, r.ws, nullptr), first);
        }
        QCOMPARE(first->Report().Length(), length); // rebuilt, not appended
        QCOMPARE(r.ws.ViewMode, kViewVoltages);
        QCOMPARE(owner.findChildren<ui::ReportWindow*>().size(), 1);
        // One document with its six pictures; the earlier ones are gone with theirs.
        QCOMPARE(first->RichTextBox1()->findChildren<QTextDocument*>().size(), 1);
        QVERIFY(!first->RichTextBox1()->document()->isUndoRedoEnabled());
        // At any width the buttons keep apart and inside the window.
        for (const int width : {100, 440, 457, 520, 900}) {
            first->resize(width, 400);
            QCoreApplication::processEvents();
            const QRect save = first->cmdSaveAs()->geometry();
            const QRect print = first->cmdPrint()->geometry();
            const QString where = QString::number(first->width());
            QVERIFY2(first->width() >= 440 && first->cmdCopyToClipboard()->x() >= 0,
                     qPrintable(where));
            QVERIFY2(!save.intersects(first->cmdReportClose()->geometry()) &&
                         !save.intersects(first->cmdCopyToClipboard()->geometry()) &&
                         save.right() < first->width(),
                     qPrintable(where));
            QVERIFY2(print.left() > first->cmdReportClose()->geometry().right() &&
                         print.right() < save.left(),
                     qPrintable(where));
        }
        QPointer<ui::ReportWindow> closing(first);
        QTest::mouseClick(first->cmdReportClose(), Qt::LeftButton);
        QTRY_VERIFY(closing.isNull());
    }
};

QTEST_MAIN(ReportWindowTest)
#include "report_window_test.moc"
