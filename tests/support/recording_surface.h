#pragma once
// A DrawingSurface fake that writes down every drawing it is asked for, one line each, with
// the print position and font in force ("print 'abc' at 0,0 Arial 10 bold"). Widths follow a
// fixed rule: characters x size x 0.5, whatever the face or style.

#include "report/drawing_surface.h"

#include <string>
#include <vector>

namespace ampora::test {

class RecordingSurface : public DrawingSurface {
  public:
    explicit RecordingSurface(float rightEdge = 100) : rightEdge_(rightEdge) {}

    std::vector<std::string> operations;
    // Every operation, one per line.
    std::string Dump() const;

    float CurrentX() const override { return x_; }
    float CurrentY() const override { return y_; }
    void SetCurrentX(float x) override { x_ = x; }
    void SetCurrentY(float y) override { y_ = y; }
    std::string FontName() const override { return fontName_; }
    void SetFontName(const std::string& name) override { fontName_ = name; }
    float FontSize() const override { return fontSize_; }
    void SetFontSize(float points) override { fontSize_ = points; }
    bool FontBold() const override { return bold_; }
    void SetFontBold(bool on) override { bold_ = on; }
    bool FontItalic() const override { return italic_; }
    void SetFontItalic(bool on) override { italic_ = on; }
    bool FontUnderline() const override { return underline_; }
    void SetFontUnderline(bool on) override { underline_ = on; }
    std::uint32_t ForeColor() const override { return colour_; }
    void SetForeColor(std::uint32_t rgb) override { colour_ = rgb; }

    float TextWidth(std::string_view text) const override;
    void Print(std::string_view text) override;
    void Clear() override;
    float RightEdge() const override { return rightEdge_; }
    void DrawLine(float x1, float y1, float x2, float y2) override;

  private:
    float rightEdge_;
    float x_ = 0;
    float y_ = 0;
    std::string fontName_ = "Arial";
    float fontSize_ = 10;
    bool bold_ = false;
    bool italic_ = false;
    bool underline_ = false;
    std::uint32_t colour_ = 0;
};

// Two decimals at most, trailing zeros dropped: "2.67", "-2.5", "19".
std::string ShortNumber(float value);

} // namespace ampora::test
