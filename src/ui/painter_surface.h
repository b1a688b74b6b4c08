#pragma once
// The drawing surface on a QImage: what the equations window and the report draw
// equations and marked-up text on.

#include "report/drawing_surface.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>

namespace ampora::ui {

class PainterSurface : public DrawingSurface {
  public:
    // Paints on image, which must outlive the surface. Font sizes in points become pixels at
    // logicalDpi (the screen's, normally 96); the image is stamped with that resolution.
    explicit PainterSurface(QImage& image, double logicalDpi = 96);
    ~PainterSurface() override;
    PainterSurface(const PainterSurface&) = delete;
    PainterSurface& operator=(const PainterSurface&) = delete;

    float CurrentX() const override { return x_; }
    float CurrentY() const override { return y_; }
    void SetCurrentX(float x) override { x_ = x; }
    void SetCurrentY(float y) override { y_ = y; }
    std::string FontName() const override { return fontName_; }
    void SetFontName(const std::string& name) override;
    float FontSize() const override { return size_; }
    void SetFontSize(float points) override { size_ = points; }
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
    float RightEdge() const override;
    void DrawLine(float x1, float y1, float x2, float y2) override;

    // The Qt font the current state stands for; "Symbol" text is drawn in the face used
    // before it, since its letters arrive already turned into Unicode Greek.
    QFont CurrentFont() const;

  private:
    QImage& image_;
    QPainter painter_;
    float x_ = 0;
    float y_ = 0;
    std::string fontName_ = "Arial";
    std::string face_ = "Arial";
    float size_ = 10;
    bool bold_ = false;
    bool italic_ = false;
    bool underline_ = false;
    std::uint32_t colour_ = 0;
};

} // namespace ampora::ui
