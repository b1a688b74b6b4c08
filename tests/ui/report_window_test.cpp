#include "../support/scripted_prompts.h"
#include "analysis/step_transitions.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "document/workspace.h"
#include "report/circuit_extents.h"
#include "report/rtf_writer.h"
#include "ui/circuit_paint.h"
#include "ui/diagram_painter.h"
#include "ui/report_pictures.h"
#include "ui/report_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>
#include <memory>

using namespace ampora;

namespace {

std::unique_ptr<Workspace> Solved(const char* example) {
    auto ws = std::make_unique<Workspace>();
    EraseWholeCircuit(ws->circuit);
    const std::string path = std::string(AMPORA_SOURCE_DIR) + "/examples/" + example;
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
