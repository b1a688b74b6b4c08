#pragma once
// The report window: the whole report of the solved circuit in a read-only box, with Copy
// (as RTF, pictures included), Close, Save as... for a file a teacher can hand out, and
// Print... for paper.

#include "report/report_clipboard.h"
#include "report/rich_text_document.h"

#include <QWidget>
#include <functional>
#include <memory>

class QPrinter;
class QPushButton;
class QTextEdit;

namespace ampora {
struct Workspace;
struct Prompts;
struct ReportPictures;
} // namespace ampora

namespace ampora::ui {

class ReportBox;

class ReportWindow : public QWidget {
    Q_OBJECT

  public:
    // Messages go through `prompts` (message boxes when null).
    explicit ReportWindow(Prompts* prompts = nullptr, QWidget* parent = nullptr);
    ~ReportWindow() override;

    // Builds the report of the circuit solved in ws into the box, replacing what was there.
    void LoadReport(Workspace& ws, ReportPictures& pictures);

    // Copies the selection, or the whole report when nothing is selected; false when the
    // clipboard could not be had.
    bool CopyToClipboard();
    // Writes HTML, RTF or PDF as the path's extension says; false (after a message) when
    // the extension is not one of them or the file cannot be written.
    bool SaveReport(const QString& path);

    // Prints the report on pages laid out as its PDF lays them out; false (after a message)
    // when the printer cannot be drawn on.
    bool PrintReport(QPrinter& printer);

    // Where Print... asks for the printer: the system's print dialog, or a test that sets the
    // printer up and answers. False cancels.
    void SetPrinterAsker(std::function<bool(QPrinter&)> ask) { askPrinter_ = std::move(ask); }
    // Where Save as... asks for the file; a test answers instead of the dialog. An empty
    // answer cancels.
    void SetSavePathAsker(std::function<QString()> ask) { askSavePath_ = std::move(ask); }
    // The clipboard Copy writes to; the system's when never set.
    void SetClipboard(Clipboard* clipboard) { clipboard_ = clipboard; }

    const RichTextDocument& Report() const { return report_; }
    QTextEdit* RichTextBox1() const;
    QPushButton* cmdCopyToClipboard() const { return cmdCopyToClipboard_; }
    QPushButton* cmdReportClose() const { return cmdReportClose_; }
    QPushButton* cmdSaveAs() const { return cmdSaveAs_; }
    QPushButton* cmdPrint() const { return cmdPrint_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void SaveAsClicked();
    void PrintClicked();
    void LayOut();

    RichTextDocument report_; // what the box shows, character for character
    ReportBox* richTextBox1_ = nullptr;
    QPushButton* cmdCopyToClipboard_ = nullptr;
    QPushButton* cmdReportClose_ = nullptr;
    QPushButton* cmdSaveAs_ = nullptr;
    QPushButton* cmdPrint_ = nullptr;
    std::unique_ptr<Prompts> ownPrompts_;
    Prompts* prompts_;
    std::unique_ptr<Clipboard> systemClipboard_;
    Clipboard* clipboard_ = nullptr;
    std::function<QString()> askSavePath_;
    std::function<bool(QPrinter&)> askPrinter_;
};

// "Print report": shows the owner's report window (made on first use, gone when closed),
// modeless, and builds the report of the circuit solved in ws into it. Outside step 3 it does
// nothing and gives null.
ReportWindow* ShowReportWindow(QWidget* owner, Workspace& ws, Prompts* prompts);

} // namespace ampora::ui
