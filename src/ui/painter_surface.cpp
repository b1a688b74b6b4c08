#include "ui/painter_surface.h"

#include "report/symbol_font.h"

#include <QFontMetricsF>
#include <QPen>
#include <QString>
#include <cmath>

namespace ampora::ui {

namespace {

QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A one-pixel line along a row or column lands on whole pixels instead of smearing over two.
float PixelCentre(float value) {
    return std::floor(value) + 0.5f;
}

} // namespace

PainterSurface::PainterSurface(QImage& image, double logicalDpi) : image_(image) {
    const int dotsPerMeter = static_cast<int>(std::lround(logicalDpi / 0.0254));
    image_.setDotsPerMeterX(dotsPerMeter);
    image_.setDotsPerMeterY(dotsPerMeter);
    painter_.begin(&image_);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setRenderHint(QPainter::TextAntialiasing);
}

PainterSurface::~PainterSurface() {
    painter_.end();
}

void PainterSurface::SetFontName(const std::string& name) {
    fontName_ = name;
    if (name != kSymbolFontName) {
        face_ = name;
    }
}

QFont PainterSurface::CurrentFont() const {
    QFont font(FromUtf8(face_));
    font.setPointSizeF(size_ > 0 ? size_ : 1);
    font.setBold(bold_);
    font.setItalic(italic_);
    font.setUnderline(underline_);
    return font;
}

float PainterSurface::TextWidth(std::string_view text) const {
    return static_cast<float>(
        QFontMetricsF(CurrentFont(), &image_).horizontalAdvance(FromUtf8(text)));
}

void PainterSurface::Print(std::string_view text) {
    const QFont font = CurrentFont();
    const QFontMetricsF metrics(font, &image_);
    const QString shown = FromUtf8(text);
    painter_.setFont(font);
    painter_.setPen(QColor::fromRgb(colour_));
    painter_.drawText(QPointF(x_, y_ + metrics.ascent()), shown);
    x_ += static_cast<float>(metrics.horizontalAdvance(shown));
}

void PainterSurface::Clear() {
    painter_.fillRect(image_.rect(), Qt::white);
    x_ = 0;
    y_ = 0;
}

float PainterSurface::RightEdge() const {
    return static_cast<float>(image_.width());
}

void PainterSurface::DrawLine(float x1, float y1, float x2, float y2) {
    if (y1 == y2) {
        y1 = y2 = PixelCentre(y1);
    } else if (x1 == x2) {
        x1 = x2 = PixelCentre(x1);
    }
    painter_.setPen(QPen(QColor::fromRgb(colour_), 1, Qt::SolidLine, Qt::FlatCap));
    painter_.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

} // namespace ampora::ui
