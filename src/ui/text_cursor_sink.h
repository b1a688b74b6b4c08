#pragma once
// The report written into a Qt text document (the report window's box, the PDF), run by run
// as the builder writes it, so that a character position means the same in both.

#include "report/rich_text_document.h"

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

// The report laid out on A4 pages and written as PDF; false when the file cannot be written.
bool WriteReportPdf(const RichTextDocument& report, const QString& path);

} // namespace ampora::ui
