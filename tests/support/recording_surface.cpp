#include "support/recording_surface.h"

#include <charconv>
#include <cmath>

namespace ampora::test {

namespace {

float CodePoints(std::string_view text) {
    float count = 0;
    for (const char c : text) {
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            ++count;
        }
    }
    return count;
}

std::string HexColour(std::uint32_t rgb) {
    char buffer[16];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, rgb, 16);
    std::string digits(buffer, result.ptr);
    return "#" + std::string(6 - digits.size(), '0') + digits;
}

} // namespace

std::string ShortNumber(float value) {
    if (std::fabs(value) < 0.005f) {
        return "0";
    }
    char buffer[32];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 2);
    std::string text(buffer, result.ptr);
    while (text.back() == '0') {
        text.pop_back();
    }
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

float RecordingSurface::TextWidth(std::string_view text) const {
    return CodePoints(text) * fontSize_ * 0.5f;
}

void RecordingSurface::Print(std::string_view text) {
    std::string line = "print '" + std::string(text) + "' at " + ShortNumber(x_) + "," +
                       ShortNumber(y_) + " " + fontName_ + " " + ShortNumber(fontSize_);
    line += bold_ ? " bold" : "";
    line += italic_ ? " italic" : "";
    line += underline_ ? " underline" : "";
    line += colour_ != 0 ? " " + HexColour(colour_) : "";
    operations.push_back(line);
    x_ += TextWidth(text);
}

void RecordingSurface::Clear() {
    operations.push_back("clear");
    x_ = 0;
    y_ = 0;
}

void RecordingSurface::DrawLine(float x1, float y1, float x2, float y2) {
    operations.push_back("line " + ShortNumber(x1) + "," + ShortNumber(y1) + " to " +
                         ShortNumber(x2) + "," + ShortNumber(y2));
}

std::string RecordingSurface::Dump() const {
    std::string dump;
    for (const std::string& operation : operations) {
        dump += operation + "\n";
    }
    return dump;
}

} // namespace ampora::test
