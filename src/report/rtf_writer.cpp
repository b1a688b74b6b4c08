#include "report/rtf_writer.h"

#include "report/palette.h"
#include "report/picture_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ampora {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr std::size_t kHexPerLine = 128;
// The page a word processor starts with: A4 with margins of an inch, tab stops every half
// inch. Its column is also narrow enough for US Letter, so a report pasted into either fits.
constexpr int kPageWidth = 11906;
constexpr int kPageHeight = 16838;
constexpr int kPageMargin = 1440;
constexpr int kTabStop = 720;

// The three faces the program uses come first, in this order; other names follow as met.
std::vector<std::string> FontTable(const RichTextDocument& document) {
    std::vector<std::string> fonts = {"Arial", "Times New Roman", "Courier New"};
    for (const RichTextRun& run : document.Runs()) {
        if (std::find(fonts.begin(), fonts.end(), run.Format.FontName) == fonts.end()) {
            fonts.push_back(run.Format.FontName);
        }
    }
    return fonts;
}

std::string_view FontFamily(const std::string& name) {
    if (name == "Arial") {
        return "\\fswiss";
    }
    if (name == "Times New Roman") {
        return "\\froman";
    }
    if (name == "Courier New") {
        return "\\fmodern";
    }
    return "\\fnil";
}

// Decodes one UTF-8 character at text[i], moving i past it; a malformed byte is U+FFFD.
char32_t NextCodePoint(std::string_view text, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    int extra = 0;
    char32_t code = 0;
    if (lead < 0x80) {
        return lead;
    }
    if (lead >= 0xF0 && lead < 0xF8) {
        extra = 3;
        code = lead & 0x07;
    } else if (lead >= 0xE0) {
        extra = 2;
        code = lead & 0x0F;
    } else if (lead >= 0xC0) {
        extra = 1;
        code = lead & 0x1F;
    } else {
        return 0xFFFD;
    }
    for (int k = 0; k < extra; ++k) {
        if (i >= text.size() || (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
            return 0xFFFD;
        }
        code = (code << 6) | (static_cast<unsigned char>(text[i++]) & 0x3F);
    }
    return code > 0x10FFFF ? 0xFFFD : code;
}

void AppendUnicode(std::string& rtf, char32_t unit) {
    // RTF takes a signed 16-bit number, followed by the one character older readers show.
    const int value =
        static_cast<int>(unit) > 32767 ? static_cast<int>(unit) - 65536 : static_cast<int>(unit);
    rtf += "\\u" + std::to_string(value) + "?";
}

std::string Escaped(std::string_view text) {
    std::string rtf;
    std::size_t i = 0;
    while (i < text.size()) {
        const char32_t c = NextCodePoint(text, i);
        if (c == '\\' || c == '{' || c == '}') {
            rtf += '\\';
            rtf += static_cast<char>(c);
        } else if (c == '\n') {
            rtf += "\\par\n";
        } else if (c == '\t') {
            rtf += "\\tab ";
        } else if (c >= 0x20 && c < 0x7F) {
            rtf += static_cast<char>(c);
        } else if (c >= 0x10000) {
            const char32_t v = c - 0x10000;
            AppendUnicode(rtf, 0xD800 + (v >> 10));
            AppendUnicode(rtf, 0xDC00 + (v & 0x3FF));
        } else if (c >= 0x80) {
            AppendUnicode(rtf, c);
        }
        // Other control characters have no place in the text and are left out.
    }
    return rtf;
}

std::string ColourTable() {
    std::string table = "{\\colortbl";
    for (int n = 0; n < kPaletteSize; ++n) {
        const std::uint32_t rgb = QBColor(n);
        table += "\\red" + std::to_string((rgb >> 16) & 0xFF) + "\\green" +
                 std::to_string((rgb >> 8) & 0xFF) + "\\blue" + std::to_string(rgb & 0xFF) + ";";
    }
    return table + "}\n";
}

std::string FormatWords(const TextFormat& format, const std::vector<std::string>& fonts) {
    const auto font = std::find(fonts.begin(), fonts.end(), format.FontName) - fonts.begin();
    const long halfPoints = std::lround(
        std::isfinite(format.FontSize) && format.FontSize > 0 ? format.FontSize * 2 : 20);
    const int colour = format.Colour >= 0 && format.Colour < kPaletteSize ? format.Colour : 0;
    std::string words = "\\f" + std::to_string(font) + "\\fs" + std::to_string(halfPoints);
    words += format.Bold ? "\\b" : "";
    words += format.Italic ? "\\i" : "";
    words += format.Underline ? "\\ul" : "";
    words += "\\cf" + std::to_string(colour);
    return words;
}

// Appended in place: a report's pictures make up most of its bytes.
// Shown whole in the page's column beside its tab, scaled down as a whole when wider.
void AppendPicture(std::string& rtf, const RichTextRun& run) {
    static constexpr std::string_view kHex = "0123456789abcdef";
    const PictureSize shown = FitPicture(run.Width * kTwipsPerPixel, run.Height * kTwipsPerPixel,
                                         PictureRoom(kPageWidth - 2 * kPageMargin, kTabStop));
    rtf += "{\\pict\\pngblip\\picw" + std::to_string(run.Width) + "\\pich" +
           std::to_string(run.Height) + "\\picwgoal" + std::to_string(std::lround(shown.Width)) +
           "\\pichgoal" + std::to_string(std::lround(shown.Height)) + "\n";
    const std::size_t bytesPerLine = kHexPerLine / 2;
    const std::size_t size = run.Png.size();
    std::size_t at = rtf.size();
    rtf.resize(at + size * 2 + (size + bytesPerLine - 1) / bytesPerLine);
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(run.Png[i]);
        rtf[at++] = kHex[byte >> 4];
        rtf[at++] = kHex[byte & 0x0F];
        if ((i + 1) % bytesPerLine == 0 || i + 1 == size) {
            rtf[at++] = '\n';
        }
    }
    rtf += '}';
}

} // namespace

std::string RtfText(const RichTextDocument& document) {
    const std::vector<std::string> fonts = FontTable(document);
    std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n{\\fonttbl";
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        rtf += "{\\f" + std::to_string(i) + std::string(FontFamily(fonts[i])) + " " +
               Escaped(fonts[i]) + ";}";
    }
    rtf += "}\n" + ColourTable() + "\\paperw" + std::to_string(kPageWidth) + "\\paperh" +
           std::to_string(kPageHeight) + "\\margl" + std::to_string(kPageMargin) + "\\margr" +
           std::to_string(kPageMargin) + "\\margt" + std::to_string(kPageMargin) + "\\margb" +
           std::to_string(kPageMargin) + "\\deftab" + std::to_string(kTabStop) +
           "\n\\pard\\plain\n";
    for (const RichTextRun& run : document.Runs()) {
        rtf += '{';
        rtf += FormatWords(run.Format, fonts);
        rtf += ' ';
        if (run.IsPicture()) {
            AppendPicture(rtf, run);
        } else {
            rtf += Escaped(run.Text);
        }
        rtf += "}\n";
    }
    return rtf + "}\n";
}

std::string RtfText(const RichTextDocument& document, std::size_t start, std::size_t end) {
    return RtfText(document.Slice(start, end));
}

} // namespace ampora
