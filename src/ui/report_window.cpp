#include "ui/report_window.h"

#include "document/workspace.h"
#include "report/html_writer.h"
#include "report/report_builder.h"
#include "report/report_files.h"
#include "report/rtf_writer.h"
#include "ui/qt_prompts.h"
#include "ui/report_pictures.h"
#include "ui/text_cursor_sink.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QPushButton>
#include <QSaveFile>
#include <QTextEdit>
#include <QThread>

namespace ampora::ui {

namespace {

constexpr int kMargin = 8;
constexpr int kButtonGap = 40;

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

bool WriteBytes(const QString& path, const std::string& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    return file.commit();
}

} // namespace

ReportWindow::ReportWindow(Prompts* prompts, QWidget* parent)
    : QWidget(parent, Qt::Window), prompts_(prompts) {
    setObjectName(QStringLiteral("frmPublish"));
    setWindowTitle(QStringLiteral("DC Ampora - Report"));
    setFont(QFont(QStringLiteral("Arial"), 10));
    if (prompts_ == nullptr) {
        ownPrompts_ = std::make_unique<QtPrompts>(this, nullptr);
        prompts_ = ownPrompts_.get();
    }

    richTextBox1_ = new QTextEdit(this);
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

void ReportWindow::LoadReport(Workspace& ws, ReportPictures& pictures) {
    report_ = RichTextDocument();
    LoadRTBoxWithReport(ws, report_, pictures);
    auto* document = new QTextDocument(richTextBox1_);
    TextCursorSink sink(*document);
    CopyRuns(report_, sink);
    richTextBox1_->setDocument(document);
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
    bool written = false;
    switch (*format) {
    case ReportFileFormat::Html:
        written = WriteBytes(path, HtmlText(report_, windowTitle().toStdString()));
        break;
    case ReportFileFormat::Rtf:
        written = WriteBytes(path, RtfText(report_));
        break;
    case ReportFileFormat::Pdf:
        written = WriteReportPdf(report_, path);
        break;
    }
    if (!written) {
        prompts_->ShowMessage("The report could not be written to " + path.toStdString() + ".",
                              MessageIcon::Exclamation);
    }
    return written;
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
    if (ws.Step != 3) {
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
