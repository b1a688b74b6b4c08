#pragma once
// What the markup printer and the equation drawing need from a picture: a movable print
// position, a font state, width measurement, text, clearing and straight lines. Positions are
// in the surface's pixels; the print position is the top-left corner of the next text cell.

#include <cstdint>
#include <string>
#include <string_view>

namespace ampora {

struct DrawingSurface {
    virtual ~DrawingSurface() = default;

    virtual float CurrentX() const = 0;
    virtual float CurrentY() const = 0;
    virtual void SetCurrentX(float x) = 0;
    virtual void SetCurrentY(float y) = 0;

    virtual std::string FontName() const = 0;
    virtual void SetFontName(const std::string& name) = 0;
    virtual float FontSize() const = 0; // points
    virtual void SetFontSize(float points) = 0;
    virtual bool FontBold() const = 0;
    virtual void SetFontBold(bool on) = 0;
    virtual bool FontItalic() const = 0;
    virtual void SetFontItalic(bool on) = 0;
    virtual bool FontUnderline() const = 0;
    virtual void SetFontUnderline(bool on) = 0;
    virtual std::uint32_t ForeColor() const = 0; // 0xRRGGBB
    virtual void SetForeColor(std::uint32_t rgb) = 0;

    // Width of UTF-8 text in the current font.
    virtual float TextWidth(std::string_view text) const = 0;
    // Draws UTF-8 text at the print position and leaves the position just behind it.
    virtual void Print(std::string_view text) = 0;
    // Wipes the picture and puts the print position back at 0, 0.
    virtual void Clear() = 0;
    // Scale left plus scale width: where wrapping starts.
    virtual float RightEdge() const = 0;
    // One-pixel line in the fore colour; the print position does not move.
    virtual void DrawLine(float x1, float y1, float x2, float y2) = 0;
};

} // namespace ampora
