#include "report/report_files.h"

#include <algorithm>
#include <filesystem>

namespace ampora {

namespace {

std::string LowerExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return extension;
}

} // namespace

std::optional<ReportFileFormat> ReportFormatOf(const std::string& path) {
    const std::string extension = LowerExtension(path);
    if (extension == ".html" || extension == ".htm") {
        return ReportFileFormat::Html;
    }
    if (extension == ".rtf") {
        return ReportFileFormat::Rtf;
    }
    if (extension == ".pdf") {
        return ReportFileFormat::Pdf;
    }
    return std::nullopt;
}

std::optional<DrawingFileFormat> DrawingFormatOf(const std::string& path) {
    const std::string extension = LowerExtension(path);
    if (extension == ".svg") {
        return DrawingFileFormat::Svg;
    }
    if (extension == ".png") {
        return DrawingFileFormat::Png;
    }
    return std::nullopt;
}

} // namespace ampora
