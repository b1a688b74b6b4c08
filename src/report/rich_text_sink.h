#pragma once
// Where the report is written: formatted text and pictures appended at the end, as into a
// rich-text box whose insertion point always stands at the end.

#include <cstddef>
#include <string>
#include <string_view>

namespace ampora {

struct TextFormat {
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    int Colour = 0; // palette number 0..15
    std::string FontName = "Arial";
    float FontSize = 10; // points

    bool operator==(const TextFormat&) const = default;
};

struct RichTextSink {
    virtual ~RichTextSink() = default;

    // The format text inserted next will take.
    virtual const TextFormat& Format() const = 0;
    virtual void SetFormat(const TextFormat& format) = 0;
    // UTF-8. CR LF (or a lone CR or LF) ends a paragraph; TAB moves to the next tab stop.
    virtual void InsertText(std::string_view text) = 0;
    // A picture given as the bytes of a PNG file and its size in pixels.
    virtual void InsertPicture(const std::string& png, int width, int height) = 0;
    // Characters so far as a text box counts them: UTF-16 code units, so a character outside
    // the Basic Multilingual Plane counts two; a paragraph break and a picture count one each.
    virtual std::size_t Length() const = 0;
};

} // namespace ampora
