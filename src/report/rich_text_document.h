#pragma once
// The report held in memory as runs of equally formatted text and pictures, from which the
// RTF and HTML writers work.

#include "report/rich_text_sink.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ampora {

struct RichTextRun {
    TextFormat Format;
    std::string Text; // UTF-8, paragraph breaks as "\n"; empty for a picture
    std::string Png;  // the picture's PNG bytes; empty for text
    int Width = 0;    // picture size in pixels
    int Height = 0;

    bool IsPicture() const { return !Png.empty(); }
};

class RichTextDocument : public RichTextSink {
  public:
    const TextFormat& Format() const override { return format_; }
    void SetFormat(const TextFormat& format) override { format_ = format; }
    void InsertText(std::string_view text) override;
    void InsertPicture(const std::string& png, int width, int height) override;
    std::size_t Length() const override { return length_; }

    // Adjacent text of one format shares a run.
    const std::vector<RichTextRun>& Runs() const { return runs_; }

    // The characters from start up to (not including) end, counted as Length counts them,
    // formats kept; positions past the end are taken as the end.
    RichTextDocument Slice(std::size_t start, std::size_t end) const;

  private:
    void AppendText(const TextFormat& format, std::string_view text, std::size_t characters);

    std::vector<RichTextRun> runs_;
    TextFormat format_;
    std::size_t length_ = 0;
    bool afterCarriageReturn_ = false;
};

} // namespace ampora
