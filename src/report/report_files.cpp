#include "report/report_files.h"

#include <algorithm>
#include <filesystem>

namespace ampora {

std::optional<ReportFileFormat> ReportFormatOf(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
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

} // namespace ampora
