#include "report/html_writer.h"

#include "report/palette.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace ampora {

namespace {

// Tabs stop every half inch, as in a word processor; a picture wider than what is left of
// the line beside its tab is scaled down as a whole, so it never wraps or runs off the page.
constexpr const char* kPictureStyle = "max-width: calc(100% - 52px); height: auto";

std::string Escaped(std::string_view text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        default:
            html += c;
        }
    }
    return html;
}

std::string Base64(std::string_view bytes) {
    static constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string encoded;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = static_cast<unsigned char>(bytes[i]) << 16;
        if (i + 1 < bytes.size()) {
            group |= static_cast<unsigned char>(bytes[i + 1]) << 8;
        }
        if (i + 2 < bytes.size()) {
            group |= static_cast<unsigned char>(bytes[i + 2]);
        }
        encoded += kDigits[(group >> 18) & 0x3F];
        encoded += kDigits[(group >> 12) & 0x3F];
        encoded += i + 1 < bytes.size() ? kDigits[(group >> 6) & 0x3F] : '=';
        encoded += i + 2 < bytes.size() ? kDigits[group & 0x3F] : '=';
    }
    return encoded;
}

std::string HexColour(int colour) {
    static constexpr std::string_view kHex = "0123456789abcdef";
    const std::uint32_t rgb = QBColor(colour >= 0 && colour < kPaletteSize ? colour : 0);
    std::string hex = "#";
    for (int shift = 20; shift >= 0; shift -= 4) {
        hex += kHex[(rgb >> shift) & 0xF];
    }
    return hex;
}

// A font name inside a quoted CSS string: only the characters that could end it are dropped.
std::string CssFontName(std::string_view name) {
    std::string css;
    for (const char c : name) {
        if (c != '\'' && c != '"' && c != '\\' && c != '<' && c != '>' && c != '&') {
            css += c;
        }
    }
    return css;
}

std::string Style(const TextFormat& format) {
    const float size = std::isfinite(format.FontSize) && format.FontSize > 0 ? format.FontSize : 10;
    char points[32];
    const auto written = std::to_chars(points, points + sizeof points, size);
    std::string style = "font-family: '" + CssFontName(format.FontName) +
                        "'; font-size: " + std::string(points, written.ptr) + "pt";
    style += format.Bold ? "; font-weight: bold" : "";
    style += format.Italic ? "; font-style: italic" : "";
    style += format.Underline ? "; text-decoration: underline" : "";
    if (format.Colour != 0) {
        style += "; color: " + HexColour(format.Colour);
    }
    return style;
}

} // namespace

std::string HtmlText(const RichTextDocument& document, const std::string& title) {
    std::string html =
        "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + Escaped(title) +
        "</title>\n</head>\n<body>\n<div style=\"white-space: pre-wrap; tab-size: 48px\">";
    for (const RichTextRun& run : document.Runs()) {
        if (run.IsPicture()) {
            html += "<img src=\"data:image/png;base64," + Base64(run.Png) + "\" width=\"" +
                    std::to_string(run.Width) + "\" height=\"" + std::to_string(run.Height) +
                    "\" style=\"" + kPictureStyle + "\" alt=\"\">";
        } else {
            html += "<span style=\"" + Style(run.Format) + "\">" + Escaped(run.Text) + "</span>";
        }
    }
    return html + "</div>\n</body>\n</html>\n";
}

} // namespace ampora
