#pragma once
// The report written into a Qt text document (the report window's box, the PDF), run by run
// as the builder writes it, so that a character position means the same in both.

#include "document/safe_file_write.h"
#include "report/rich_text_document.h"

#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QTextCursor>
#include <QTextDocument>
#include <string>

namespace ampora::ui {

class TextCursorSink : public RichTextSink {
  public:
    // Appends at the end of document, which must outlive the sink.
    explicit TextCursorSink(QTextDocument& document);

    const TextFormat& Format() const override { return format_; }
    void SetFormat(const TextFormat& format) override { format_ = format; }
    void InsertText(std::string_view text) override;
    void InsertPicture(const std::string& png, int width, int height) override;
    std::size_t Length() const override;

  private:
    QTextDocument& document_;
    QTextCursor cursor_;
    TextFormat format_;
    bool afterCarriageReturn_ = false;
    int pictures_ = 0;
};

// A document's runs replayed into a sink, formats and pictures as they were.
void CopyRuns(const RichTextDocument& from, RichTextSink& to);

// Shows every report picture of document whole beside its tab on lines of textWidth: one
// wider than the room left is scaled down as a whole, keeping its proportions. With a device
// pixel ratio the shrunk bitmap is redrawn smoothly for a screen of that ratio; with 0 the
// picture keeps all its pixels (for paper, where they make it sharper).
void FitPictures(QTextDocument& document, qreal textWidth, qreal devicePixelRatio);

// On a paged document: moves a heading, the sentence that introduces a picture or table and
// a table's rows onto the page of what they belong with, when that page can hold them all.
void KeepTogetherOnPages(QTextDocument& document);

// The pages of the report: A4, portrait, 20 mm margins at the sides, 18 mm above and below.
QPageLayout ReportPageLayout();

// The report laid out on the pages of `device` (its page layout set) at `resolution` dots per
// inch: the text column of the window, pictures within it, each page numbered at its foot.
// False when the device cannot be painted on.
bool PaintReportPages(const RichTextDocument& report, QPagedPaintDevice& device, int resolution);

// The report on ReportPageLayout pages as the bytes of a PDF file; empty when it cannot be
// drawn.
std::string ReportPdf(const RichTextDocument& report);
// ReportPdf written safely to path, with the system's reason when it could not be.
FileWriteResult WriteReportPdf(const RichTextDocument& report, const QString& path);

} // namespace ampora::ui
