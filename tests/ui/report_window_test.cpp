#include "../support/scripted_prompts.h"
#include "../support/wide_circuit.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "report/circuit_extents.h"
#include "report/rtf_writer.h"
#include "tables/workspace.h"
#include "ui/circuit_paint.h"
#include "ui/diagram_painter.h"
#include "ui/report_pictures.h"
#include "ui/report_window.h"
#include "workflow/step_transitions.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>
#include <QtTest>
#include <functional>
#include <memory>

using namespace ampora;

namespace {

std::string ExamplePath(const char* example) {
    return std::string(AMPORA_SOURCE_DIR) + "/examples/" + example;
}

// Solved as the window solves it; path may be anywhere.
std::unique_ptr<Workspace> SolvedAt(const std::string& path) {
    auto ws = std::make_unique<Workspace>();
    EraseWholeCircuit(ws->circuit);
    if (!LoadFromIniFile(ws->circuit, path).complete) {
        return nullptr;
    }
    test::ScriptedPrompts prompts;
    if (LeaveStep1(*ws, prompts) != TransitionResult::Entered ||
        LeaveStep2(*ws, prompts) != TransitionResult::Entered) {
        return nullptr;
    }
    ws->CurrentFileName = path;
    return ws;
}

std::unique_ptr<Workspace> Solved(const char* example) {
    return SolvedAt(ExamplePath(example));
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The largest example stretched to 1440 units across, written into folder.
QString WideCircuit(const QTemporaryDir& folder) {
    const QString path = folder.filePath(QStringLiteral("wide.amq"));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QByteArray::fromStdString(test::StretchedAcross(
            ReadFile(QString::fromStdString(ExamplePath("two_supernodes.amq"))).toStdString(), 2)));
    }
    return path;
}

// The selection of the first occurrence of text in the box, made as a reader makes it.
bool Select(QTextEdit* box, const QString& text) {
    const QTextCursor found = box->document()->find(text);
    if (found.isNull()) {
        return false;
    }
    box->setTextCursor(found);
    return true;
}

int PictureCount(const std::string& rtf) {
    int count = 0;
    for (std::size_t at = 0; (at = rtf.find("{\\pict\\pngblip", at)) != std::string::npos; ++at) {
        ++count;
    }
    return count;
}

// The report as the box should hold it: paragraph breaks and pictures one character each.
QString ExpectedRawText(const RichTextDocument& report) {
    QString text;
    for (const RichTextRun& run : report.Runs()) {
        if (run.IsPicture()) {
            text += QChar::ObjectReplacementCharacter;
        } else {
            text += QString::fromStdString(run.Text).replace(u'\n', QChar::ParagraphSeparator);
        }
    }
    return text;
}

QString ClipboardRtf() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data == nullptr ? QString() : QString::fromUtf8(data->data(QStringLiteral("text/rtf")));
}

// Saves what the window shows when the developer asks for screenshots.
void Shoot(QWidget& window, const QString& name) {
    const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
    if (!dir.isEmpty()) {
        window.grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
    }
}

} // namespace

class ReportWindowTest : public QObject {
    Q_OBJECT

  private slots:
    void theBoxHoldsTheReportCharacterForCharacter() {
        auto ws = Solved("wheatstone_bridge.amq");
        QVERIFY(ws);
        ui::ReportWindow window;
        ui::QtReportPictures pictures;
        window.LoadReport(*ws, pictures);
        QCOMPARE(window.RichTextBox1()->document()->toRawText(), ExpectedRawText(window.Report()));
        QCOMPARE(static_cast<std::size_t>(window.RichTextBox1()->document()->characterCount() - 1),
                 window.Report().Length());
        QVERIFY(window.RichTextBox1()->isReadOnly());
    }

    void copyWithNothingSelectedPutsTheWholeReportWithItsPictures() {
        auto ws = Solved("wheatstone_bridge.amq");
        QVERIFY(ws);
        ui::ReportWindow window;
        ui::QtReportPictures pictures;
        window.LoadReport(*ws, pictures);
        QGuiApplication::clipboard()->setText(QStringLiteral("earlier contents"));
        QTest::mouseClick(window.cmdCopyToClipboard(), Qt::LeftButton);
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        QVERIFY(data != nullptr);
        QCOMPARE(data->formats(), QStringList{QStringLiteral("text/rtf")});
        const std::string rtf = ClipboardRtf().toStdString();
        QCOMPARE(rtf, RtfText(window.Report()));
        // The two equation pictures and the four diagrams, each a real PNG.
        QCOMPARE(PictureCount(rtf), 6);
        QVERIFY(rtf.find("89504e470d0a1a0a") != std::string::npos);
    }

    void copyWithASelectionPutsOnlyTheSelection() {
        auto ws = Solved("wheatstone_bridge.amq");
        QVERIFY(ws);
        ui::ReportWindow window;
        ui::QtReportPictures pictures;
        window.LoadReport(*ws, pictures);
        QTextEdit* box = window.RichTextBox1();
        const QTextCursor heading = box->document()->find(QStringLiteral("The voltage:"));
        QVERIFY(!heading.isNull());
        // From the heading to the end of its picture's line, four paragraphs on.
        QTextCursor cursor(box->document());
        cursor.setPosition(heading.selectionStart());
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, 4);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        box->setTextCursor(cursor);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        box->ensureCursorVisible();
        Shoot(window, QStringLiteral("report_window_with_a_selection"));
        QVERIFY(window.CopyToClipboard());
        const std::string rtf = ClipboardRtf().toStdString();
        QCOMPARE(rtf, RtfText(window.Report(), static_cast<std::size_t>(cursor.selectionStart()),
                              static_cast<std::size_t>(cursor.selectionEnd())));
        QVERIFY(rtf.find("The voltage:") != std::string::npos);
        QVERIFY(rtf.find("head of the arrow") != std::string::npos);
        QCOMPARE(PictureCount(rtf), 1);
        QVERIFY(rtf.find("Ampora") == std::string::npos);
        QVERIFY(rtf.find("The electric current:") == std::string::npos);
    }

    void saveAsWritesTheFormatTheNameAsksFor() {
        auto ws = Solved("supernode.amq");
        QVERIFY(ws);
        test::ScriptedPrompts prompts;
        ui::ReportWindow window(&prompts);
        ui::QtReportPictures pictures;
        window.LoadReport(*ws, pictures);
        QTemporaryDir folder;
        QString answer;
        window.SetSavePathAsker([&answer] { return answer; });
        const auto save = [&](const QString& name) {
            answer = name.isEmpty() ? QString() : folder.filePath(name);
            QTest::mouseClick(window.cmdSaveAs(), Qt::LeftButton);
            QFile file(folder.filePath(name));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QVERIFY(save(QStringLiteral("report.html")).contains("<img src=\"data:image/png;base64,"));
        QCOMPARE(save(QStringLiteral("report.rtf")).toStdString(), RtfText(window.Report()));
        QVERIFY(save(QStringLiteral("report.pdf")).startsWith("%PDF-"));
        save(QStringLiteral("summary")); // a name without an extension becomes a PDF
        QVERIFY(QFile::exists(folder.filePath(QStringLiteral("summary.pdf"))));
        save(QString()); // cancelled
        QVERIFY(prompts.messages.empty());
        save(QStringLiteral("report.doc"));
        QCOMPARE(prompts.messages.size(), std::size_t{1});
        QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("report.doc"))));
        // A name that is a folder: nothing is written and the message says why.
        for (const QString& name :
             {QStringLiteral("in.html"), QStringLiteral("in.rtf"), QStringLiteral("in.pdf")}) {
            QVERIFY(QDir(folder.path()).mkdir(name));
            prompts.messages.clear();
            save(name);
            QCOMPARE(prompts.messages.size(), std::size_t{1});
            QCOMPARE(prompts.messages.front(), "(!) The report could not be written to " +
                                                   folder.filePath(name).toStdString() +
                                                   ": Is a directory.");
            QVERIFY(QFileInfo(folder.filePath(name)).isDir());
            QCOMPARE(QDir(folder.filePath(name))
                         .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden),
                     QStringList());
        }
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 4);
    }

    void everyPictureIsShownWholeBesideItsTabAtAnyWidth() {
        QTemporaryDir folder;
        const QString wide = WideCircuit(folder);
        for (const QString& circuit :
             {wide, QString::fromStdString(ExamplePath("two_supernodes.amq"))}) {
            auto ws = SolvedAt(circuit.toStdString());
            QVERIFY(ws);
            ui::ReportWindow window;
            ui::QtReportPictures pictures;
            window.LoadReport(*ws, pictures);
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            std::vector<const RichTextRun*> natural;
            for (const RichTextRun& run : window.Report().Runs()) {
                if (run.IsPicture()) {
                    natural.push_back(&run);
                }
            }
            QCOMPARE(natural.size(), std::size_t{6});
            for (const int width : {440, 700, 1600}) {
                window.resize(width, 600);
                QCoreApplication::processEvents();
                QTextEdit* box = window.RichTextBox1();
                QTextDocument* document = box->document();
                const qreal text = box->viewport()->width() - 2 * document->documentMargin();
                std::size_t seen = 0;
                for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
                    if (!block.text().contains(QChar::ObjectReplacementCharacter)) {
                        continue;
                    }
                    const QString where = QStringLiteral("%1 at %2 px, picture %3")
                                              .arg(circuit)
                                              .arg(width)
                                              .arg(seen + 1);
                    document->documentLayout()->blockBoundingRect(block);
                    // One line: the tab and the picture beside it, no gap above it.
                    QVERIFY2(block.layout()->lineCount() == 1, qPrintable(where));
                    const QTextLine line = block.layout()->lineAt(0);
                    QVERIFY2(line.naturalTextWidth() <= text, qPrintable(where));
                    const QTextImageFormat shown =
                        block.begin().fragment().charFormat().isImageFormat()
                            ? block.begin().fragment().charFormat().toImageFormat()
                            : (++block.begin()).fragment().charFormat().toImageFormat();
                    QVERIFY2(shown.isValid(), qPrintable(where));
                    const RichTextRun& run = *natural.at(seen++);
                    // Whole, in proportion, and never enlarged.
                    QVERIFY2(shown.width() <= run.Width, qPrintable(where));
                    QVERIFY2(std::abs(shown.height() / shown.width() -
                                      double(run.Height) / run.Width) < 0.02,
                             qPrintable(where));
                }
                QCOMPARE(seen, std::size_t{6});
                QCOMPARE(window.RichTextBox1()->horizontalScrollBar()->maximum(), 0);
                Shoot(window,
                      QStringLiteral("report_%1_%2").arg(QFileInfo(circuit).baseName()).arg(width));
            }
        }
    }

    void copyingFromTheBoxTakesTheSelectionExactlyWithItsPictures() {
        // A path with an emoji, which the box counts as two positions, before everything.
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("circuits \U0001F50B")));
        const QString path = folder.filePath(QStringLiteral("circuits \U0001F50B/bridge.amq"));
        QVERIFY(QFile::copy(QString::fromStdString(ExamplePath("wheatstone_bridge.amq")), path));
        auto ws = SolvedAt(path.toStdString());
        QVERIFY(ws);
        ui::ReportWindow window;
        ui::QtReportPictures pictures;
        window.LoadReport(*ws, pictures);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTextEdit* box = window.RichTextBox1();
        const std::vector<std::function<void()>> copies = {
            [box] { QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier); },
            [box] {
                std::unique_ptr<QMenu> menu(box->createStandardContextMenu());
                for (QAction* action : menu->actions()) {
                    if (action->text().remove(u'&').startsWith(QStringLiteral("Copy"))) {
                        action->trigger();
                    }
                }
            }};
        for (const auto& copy : copies) {
            QGuiApplication::clipboard()->setText(QStringLiteral("earlier contents"));
            box->selectAll();
            copy();
            const QMimeData* data = QGuiApplication::clipboard()->mimeData();
            QVERIFY(data != nullptr);
            QCOMPARE(ClipboardRtf().toStdString(), RtfText(window.Report()));
            QCOMPARE(PictureCount(ClipboardRtf().toStdString()), 6);
            QCOMPARE(data->html().count(QStringLiteral("<img src=\"data:image/png;base64,")), 6);
            QVERIFY(data->text().startsWith(QStringLiteral("Ampora\n")));
            QVERIFY(data->text().contains(QStringLiteral("The electric power:")));
        }
        for (const QString& text :
             {path, QStringLiteral("\U0001F50B/bridge"), QStringLiteral("The circuit:"),
              QStringLiteral("Counting unknowns and equations:")}) {
            QVERIFY2(Select(box, text), qPrintable(text));
            QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier);
            QCOMPARE(QGuiApplication::clipboard()->mimeData()->text(), text);
            // The copy for a word processor ends with the same characters.
            const QString tail =
                text.contains(u'/') ? text.mid(text.lastIndexOf(u'/')) : text.right(8);
            QVERIFY2(ClipboardRtf().contains(tail + u'}'), qPrintable(tail));
        }
    }

    void twentyPrintsKeepOnlyTheLastReport() {
        auto ws = Solved("two_supernodes.amq");
        QVERIFY(ws);
        QWidget owner;
        ui::ReportWindow* window = nullptr;
        for (int print = 0; print < 20; ++print) {
            window = ui::ShowReportWindow(&owner, *ws, nullptr);
            // The resident memory after each print, for whoever measures it.
            if (qEnvironmentVariableIsSet("AMPORA_MEASURE_MEMORY")) {
                QFile status(QStringLiteral("/proc/self/status"));
                if (status.open(QIODevice::ReadOnly)) {
                    for (const QByteArray& line : status.readAll().split('\n')) {
                        if (line.startsWith("VmRSS")) {
                            qInfo("print %d: %s", print + 1, line.simplified().constData());
                        }
                    }
                }
            }
        }
        QCOMPARE(owner.findChildren<ui::ReportWindow*>().size(), 1);
        // One document with its six pictures; the earlier ones are gone with theirs.
        QCOMPARE(window->RichTextBox1()->findChildren<QTextDocument*>().size(), 1);
        QVERIFY(!window->RichTextBox1()->document()->isUndoRedoEnabled());
    }

    void saveAsNeverOverlapsCopyOrClose() {
        ui::ReportWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (const int width : {100, 440, 457, 520, 900}) {
            window.resize(width, 400);
            QCoreApplication::processEvents();
            QVERIFY(window.width() >= 440);
            const QRect save = window.cmdSaveAs()->geometry();
            QVERIFY2(!save.intersects(window.cmdReportClose()->geometry()),
                     qPrintable(QString::number(window.width())));
            QVERIFY(!save.intersects(window.cmdCopyToClipboard()->geometry()));
            QVERIFY(save.right() < window.width());
            QVERIFY(window.cmdCopyToClipboard()->x() >= 0);
        }
    }

    void printReportOpensOneWindowAndLeavesTheViewAsItWas() {
        auto ws = Solved("supernode.amq");
        QVERIFY(ws);
        ws->ViewMode = 2;
        QWidget owner;
        ws->Step = 2;
        QCOMPARE(ui::ShowReportWindow(&owner, *ws, nullptr), nullptr);
        ws->Step = 3;
        ui::ReportWindow* first = ui::ShowReportWindow(&owner, *ws, nullptr);
        QVERIFY(first->isVisible());
        QVERIFY(!first->isModal());
        const std::size_t length = first->Report().Length();
        QCOMPARE(ui::ShowReportWindow(&owner, *ws, nullptr), first);
        QCOMPARE(first->Report().Length(), length); // rebuilt, not appended
        QCOMPARE(ws->ViewMode, std::int16_t{2});
        QPointer<ui::ReportWindow> closing(first);
        QTest::mouseClick(first->cmdReportClose(), Qt::LeftButton);
        QTRY_VERIFY(closing.isNull());
    }

    void theDiagramIsCroppedToTheCircuitWithItsMargin() {
        auto ws = Solved("supernode.amq");
        QVERIFY(ws);
        // The labels as the window lays them out, for the view the workspace is in.
        const DiagramLabels labels = ui::LayOutView(*ws, ws->ViewMode, 3);
        float top = 0, bottom = 0, left = 0, right = 0;
        ui::DiagramExtents(*ws, labels, top, bottom, left, right);
        // The wires of the example reach from 80 to 560 across: the margin is 6 beyond the
        // leftmost wire or label.
        QVERIFY(left <= 80 - 6);
        const QImage image = ui::CircuitPaint(*ws, 1);
        QCOMPARE(image.width(), static_cast<int>(std::ceil(right - left + 2)));
        QCOMPARE(image.height(), static_cast<int>(std::ceil(bottom - top + 2)));
        // The margin is white and the circuit is drawn inside it.
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(image.pixel(x, 0), qRgb(255, 255, 255));
        }
        int ink = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                ink += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
            }
        }
        QVERIFY(ink > 500);
    }
};

QTEST_MAIN(ReportWindowTest)
#include "report_window_test.moc"
