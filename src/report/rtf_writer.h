#pragma once
// The report as RTF 1.x text, as it goes to the clipboard and to .rtf files: fonts, sizes,
// bold, italic, underline, palette colours, paragraphs, tabs, Unicode and PNG pictures.

#include "report/rich_text_document.h"

#include <string>

namespace ampora {

// The whole document.
std::string RtfText(const RichTextDocument& document);

// Only the characters from start up to (not including) end, positions as Length counts.
std::string RtfText(const RichTextDocument& document, std::size_t start, std::size_t end);

} // namespace ampora
