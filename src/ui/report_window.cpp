#include "ui/report_window.h"

#include "document/safe_file_write.h"
#include "report/html_writer.h"
#include "report/report_builder.h"
#include "report/report_files.h"
#include "report/rtf_writer.h"
#include "tables/workspace.h"
#include "ui/qt_prompts.h"
#include "ui/report_pictures.h"
#include "ui/text_cursor_sink.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>
#include <QThread>
#include <algorithm>

namespace ampora::ui {

namespace {

constexpr int kMargin = 8;
constexpr int kButtonGap = 40;
constexpr int kMinimumWidth = 440;

// The system clipboard, offering the report as RTF only. Setting it fails when another
// program keeps it from us: what we put there is then not what is there.
struct SystemClipboard : Clipboard {
    bool Clear() override {
        QClipboard* clipboard = QGuiApplication::clipboard();
        if (clipboard == nullptr) {
            return false;
        }
        clipboard->clear();
        return true;
    }
    bool PutRtf(const std::string& rtf) override {
        QClipboard* clipboard = QGuiApplication::clipboard();
        if (clipboard == nullptr) {
            return false;
        }
        const QByteArray bytes = QByteArray::fromStdString(rtf);
        auto* data = new QMimeData;
        data->setData(QStringLiteral("text/rtf"), bytes);
        clipboard->setMimeData(data);
        const QMimeData* now = clipboard->mimeData();
        return now != nullptr && now->data(QStringLiteral("text/rtf")) == bytes;
    }
};

// The text of a part of the report as a plain-text editor takes it: pictures left out.
std::string PlainText(const RichTextDocument& part) {
    std::string text;
    for (const RichTextRun& run : part.Runs()) {
        text += run.Text;
    }
    return text;
}

// A part of the report on the clipboard, offered as rich text, HTML and plain text. Each
// form is made only when a program asks for it, so holding the copy costs no more than the
// report itself.
class ReportMimeData : public QMimeData {
  public:
    explicit ReportMimeData(RichTextDocument part) : part_(std::move(part)) {}

    QStringList formats() const override {
        return {QStringLiteral("text/rtf"), QStringLiteral("text/html"),
                QStringLiteral("text/plain")};
    }
    bool hasFormat(const QString& mimeType) const override { return formats().contains(mimeType); }

  protected:
    QVariant retrieveData(const QString& mimeType, QMetaType type) const override {
        if (mimeType == QStringLiteral("text/rtf")) {
            return QByteArray::fromStdString(RtfText(part_));
        }
        std::string text;
        if (mimeType == QStringLiteral("text/html")) {
            text = HtmlText(part_, "DC Ampora - Report");
        } else if (mimeType == QStringLiteral("text/plain")) {
            text = PlainText(part_);
        } else {
            return QVariant();
        }
        if (type.id() == QMetaType::QByteArray) {
            return QByteArray::fromStdString(text);
        }
        return QString::fromStdString(text);
    }

  private:
    RichTextDocument part_;
};

} // namespace

// The report's box. What Ctrl+C, the context menu's Copy and dragging take from it is the
// report itself: rich text with its pictures, HTML with the same pictures, and plain text.
// Its pictures are kept whole within its width.
class ReportBox : public QTextEdit {
  public:
    ReportBox(const RichTextDocument& report, QWidget* parent)
        : QTextEdit(parent), report_(report) {}

    void FitPicturesToWidth() {
        FitPictures(*document(), viewport()->width() - 2 * document()->documentMargin(),
                    devicePixelRatioF());
    }

  protected:
    QMimeData* createMimeDataFromSelection() const override {
        const QTextCursor cursor = textCursor();
        return new ReportMimeData(report_.Slice(static_cast<std::size_t>(cursor.selectionStart()),
                                                static_cast<std::size_t>(cursor.selectionEnd())));
    }

    void resizeEvent(QResizeEvent* event) override {
        QTextEdit::resizeEvent(event);
        FitPicturesToWidth();
    }

  private:
    const RichTextDocument& report_;
};

ReportWindow::ReportWindow(Prompts* prompts, QWidget* parent)
    : QWidget(parent, Qt::Window), prompts_(prompts) {
    setObjectName(QStringLiteral("frmPublish"));
    setWindowTitle(QStringLiteral("DC Ampora - Report"));
    setFont(QFont(QStringLiteral("Arial"), 10));
    if (prompts_ == nullptr) {
        ownPrompts_ = std::make_unique<QtPrompts>(this, nullptr);
        prompts_ = ownPrompts_.get();
    }

    richTextBox1_ = new ReportBox(report_, this);
    // Always there, so that fitting the pictures to the width never makes it come and go.
    richTextBox1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    richTextBox1_->setObjectName(QStringLiteral("RichTextBox1"));
    richTextBox1_->setReadOnly(true);
    richTextBox1_->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                           Qt::TextSelectableByKeyboard);
    richTextBox1_->move(kMargin, kMargin);

    cmdCopyToClipboard_ = new QPushButton(QStringLiteral("Copy"), this);
    cmdCopyToClipboard_->setObjectName(QStringLiteral("cmdCopyToClipboard"));
    cmdCopyToClipboard_->setToolTip(QStringLiteral(
        "copies the selected text or (if nothing selected) the entire report to the clipboard"));
    cmdReportClose_ = new QPushButton(QStringLiteral("Close"), this);
    cmdReportClose_->setObjectName(QStringLiteral("cmdReportClose"));
    cmdSaveAs_ = new QPushButton(QStringLiteral("Save as..."), this);
    cmdSaveAs_->setObjectName(QStringLiteral("cmdSaveAs"));
    cmdSaveAs_->setToolTip(
        QStringLiteral("saves the report as a web page (.html), rich text (.rtf) or PDF (.pdf)"));
    // The buttons share one size, wide enough for the longest caption.
    const QSize button = cmdSaveAs_->sizeHint().expandedTo(QSize(96, 0));
    for (QPushButton* b : {cmdCopyToClipboard_, cmdReportClose_, cmdSaveAs_}) {
        b->resize(button);
    }
    // Narrow enough for a small screen, wide enough that Save as... at the right never
    // reaches Close: the pair takes half the window from the middle, Save as... its margin.
    setMinimumWidth(
        std::max(kMinimumWidth, 2 * (kButtonGap / 2 + 2 * button.width() + kMargin + kMargin)));

    connect(cmdCopyToClipboard_, &QPushButton::clicked, this, [this] { CopyToClipboard(); });
    connect(cmdReportClose_, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdSaveAs_, &QPushButton::clicked, this, &ReportWindow::SaveAsClicked);

    askSavePath_ = [this] {
        return QFileDialog::getSaveFileName(
            this, QStringLiteral("Save the report as"), QString(),
            QStringLiteral("PDF (*.pdf);;Web page (*.html *.htm);;Rich text (*.rtf)"));
    };
    resize(720, 640);
}

ReportWindow::~ReportWindow() = default;

QTextEdit* ReportWindow::RichTextBox1() const {
    return richTextBox1_;
}

void ReportWindow::LoadReport(Workspace& ws, ReportPictures& pictures) {
    report_ = RichTextDocument();
    LoadRTBoxWithReport(ws, report_, pictures);
    auto* document = new QTextDocument(richTextBox1_);
    TextCursorSink sink(*document);
    CopyRuns(report_, sink);
    // The box deletes only the document it made itself, not one handed to it: the last
    // report goes here, pictures and all, so that printing again and again piles nothing up.
    const QPointer<QTextDocument> last = richTextBox1_->document();
    richTextBox1_->setDocument(document);
    if (!last.isNull() && last->parent() == richTextBox1_) {
        delete last.data();
    }
    richTextBox1_->FitPicturesToWidth();
    richTextBox1_->moveCursor(QTextCursor::Start);
}

bool ReportWindow::CopyToClipboard() {
    if (clipboard_ == nullptr) {
        systemClipboard_ = std::make_unique<SystemClipboard>();
        clipboard_ = systemClipboard_.get();
    }
    const QTextCursor cursor = richTextBox1_->textCursor();
    return CopyReportToClipboard(report_, static_cast<std::size_t>(cursor.selectionStart()),
                                 static_cast<std::size_t>(cursor.selectionEnd()), *clipboard_,
                                 *prompts_, [](int ms) { QThread::msleep(ms); });
}

bool ReportWindow::SaveReport(const QString& path) {
    const std::optional<ReportFileFormat> format = ReportFormatOf(path.toStdString());
    if (!format) {
        prompts_->ShowMessage("The report can be saved as a web page (.html), rich text (.rtf) "
                              "or PDF (.pdf): end the file's name with one of these.",
                              MessageIcon::Exclamation);
        return false;
    }
    FileWriteResult result;
    switch (*format) {
    case ReportFileFormat::Html:
        result =
            WriteFileSafely(path.toStdString(), HtmlText(report_, windowTitle().toStdString()));
        break;
    case ReportFileFormat::Rtf:
        result = WriteFileSafely(path.toStdString(), RtfText(report_));
        break;
    case ReportFileFormat::Pdf:
        result = WriteReportPdf(report_, path);
        break;
    }
    if (!result.written) {
        prompts_->ShowMessage("The report could not be written to " + path.toStdString() + ": " +
                                  result.reason + ".",
                              MessageIcon::Exclamation);
    }
    return result.written;
}

void ReportWindow::SaveAsClicked() {
    QString path = askSavePath_ ? askSavePath_() : QString();
    if (path.isEmpty()) {
        return;
    }
    // A name typed without an extension gets the one most asked for.
    if (QFileInfo(path).suffix().isEmpty()) {
        path += QStringLiteral(".pdf");
    }
    SaveReport(path);
}

void ReportWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    LayOut();
}

void ReportWindow::LayOut() {
    const int w = width();
    const int h = height();
    const int b = cmdCopyToClipboard_->height();
    const int top = h - b - kMargin;
    cmdCopyToClipboard_->move(w / 2 - cmdCopyToClipboard_->width() - kButtonGap / 2, top);
    cmdReportClose_->move(w / 2 + kButtonGap / 2, top);
    // Save as... stands apart at the right, so Copy and Close stay centred as a pair.
    cmdSaveAs_->move(w - cmdSaveAs_->width() - kMargin, top);
    richTextBox1_->resize(w - 2 * kMargin, h - b - 3 * kMargin);
}

void ReportWindow::closeEvent(QCloseEvent* event) {
    richTextBox1_->clear();
    report_ = RichTextDocument();
    QWidget::closeEvent(event);
}

ReportWindow* ShowReportWindow(QWidget* owner, Workspace& ws, Prompts* prompts) {
    if (ws.Step != kStepResults) {
        return nullptr; // there is nothing to report before the circuit is solved
    }
    auto* window = owner != nullptr ? owner->findChild<ReportWindow*>() : nullptr;
    if (window == nullptr) {
        window = new ReportWindow(prompts, owner);
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->show();
    window->raise();
    QtReportPictures pictures;
    window->LoadReport(ws, pictures);
    return window;
}

} // namespace ampora::ui
