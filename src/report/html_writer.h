#pragma once
// The report as a self-contained HTML page, pictures embedded as data: URIs.

#include "report/rich_text_document.h"

#include <string>

namespace ampora {

std::string HtmlText(const RichTextDocument& document, const std::string& title);

} // namespace ampora
