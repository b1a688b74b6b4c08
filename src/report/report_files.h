#pragma once
// The kinds of file the report and the drawing can be saved as, told apart by the file's
// extension.

#include <optional>
#include <string>

namespace ampora {

enum class ReportFileFormat { Html, Rtf, Pdf };

// ".html" or ".htm", ".rtf", ".pdf", in any case; nothing for another extension or none.
std::optional<ReportFileFormat> ReportFormatOf(const std::string& path);

enum class DrawingFileFormat { Svg, Png };

// ".svg", ".png", in any case; nothing for another extension or none.
std::optional<DrawingFileFormat> DrawingFormatOf(const std::string& path);

} // namespace ampora
