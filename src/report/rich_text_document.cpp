#include "report/rich_text_document.h"

#include "report/utf8_text.h"

#include <algorithm>

namespace ampora {

void RichTextDocument::AppendText(const TextFormat& format, std::string_view text,
                                  std::size_t characters) {
    if (text.empty()) {
        return;
    }
    if (runs_.empty() || runs_.back().IsPicture() || !(runs_.back().Format == format)) {
        runs_.push_back({format, "", "", 0, 0});
    }
    runs_.back().Text += text;
    length_ += characters;
}

void RichTextDocument::InsertText(std::string_view text) {
    std::string normalised;
    normalised.reserve(text.size());
    for (const char c : text) {
        // The LF of a CR LF pair split over two calls still makes one break.
        if (c == '\n' && afterCarriageReturn_) {
            afterCarriageReturn_ = false;
            continue;
        }
        afterCarriageReturn_ = c == '\r';
        normalised += c == '\r' ? '\n' : c;
    }
    AppendText(format_, normalised, Utf16Length(normalised));
}

void RichTextDocument::InsertPicture(const std::string& png, int width, int height) {
    afterCarriageReturn_ = false;
    if (png.empty()) {
        return;
    }
    runs_.push_back({format_, "", png, width, height});
    ++length_;
}

RichTextDocument RichTextDocument::Slice(std::size_t start, std::size_t end) const {
    RichTextDocument slice;
    slice.format_ = format_;
    std::size_t position = 0;
    for (const RichTextRun& run : runs_) {
        const std::size_t size = run.IsPicture() ? 1 : Utf16Length(run.Text);
        const std::size_t from = std::max(start, position);
        const std::size_t to = std::min(end, position + size);
        if (from < to) {
            if (run.IsPicture()) {
                slice.runs_.push_back(run);
                ++slice.length_;
            } else {
                const std::size_t first = ByteOffsetOfUtf16Position(run.Text, from - position);
                const std::size_t last = ByteOffsetOfUtf16Position(run.Text, to - position);
                const std::string_view part =
                    std::string_view(run.Text).substr(first, last - first);
                slice.AppendText(run.Format, part, Utf16Length(part));
            }
        }
        position += size;
    }
    return slice;
}

} // namespace ampora
