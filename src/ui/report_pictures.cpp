#include "ui/report_pictures.h"

#include "equations/equation_drawing.h"
#include "ui/circuit_paint.h"
#include "ui/painter_surface.h"

#include <QBuffer>
#include <algorithm>
#include <cmath>

namespace ampora::ui {

namespace {

constexpr float kMargin = 4;
constexpr int kPngFastest = 90; // Qt's PNG "quality" 90 is zlib level 1

const std::vector<std::string>& EquationTexts(const Workspace& ws, int which) {
    return which == 1 ? ws.equations.FirstWritten : ws.equations.Collected;
}

// Draws every equation from the top-left corner down and returns the room they took.
EquationExtent DrawEquations(PainterSurface& surface, const Workspace& ws, int which) {
    MarkupState state;
    state.FontIndex = ws.preferences.FontIndex;
    const FontSet& set = CurrentFontSet(state);
    surface.SetFontName(set.FontName);
    surface.SetFontSize(set.NormalSize);
    EquationExtent whole;
    float y = kMargin;
    for (const std::string& text : EquationTexts(ws, which)) {
        surface.SetCurrentX(kMargin);
        surface.SetCurrentY(y);
        const EquationExtent one = DrawEquation(surface, state, text);
        whole.Width = std::max(whole.Width, kMargin + one.Width);
        y += one.Height + set.LineStep; // an empty line between equations
    }
    whole.Height = y - CurrentFontSet(state).LineStep;
    return whole;
}

} // namespace

QImage ReportEquationPicture(const Workspace& ws, int which, qreal scale) {
    if (EquationTexts(ws, which).empty()) {
        return {};
    }
    // The first pass only measures: a one-pixel picture clips all the drawing away.
    QImage probe(1, 1, QImage::Format_RGB32);
    EquationExtent extent;
    {
        PainterSurface surface(probe);
        extent = DrawEquations(surface, ws, which);
    }
    const qreal width = std::ceil(extent.Width + kMargin);
    const qreal height = std::ceil(extent.Height + kMargin);
    QImage image(static_cast<int>(width * scale), static_cast<int>(height * scale),
                 QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    PainterSurface surface(image);
    DrawEquations(surface, ws, which);
    return image;
}

ReportPicture ToReportPicture(const QImage& image) {
    if (image.isNull()) {
        return {};
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    // The fastest zlib level: flat-coloured drawings still pack small, and the report opens
    // without a wait.
    if (!image.save(&buffer, "PNG", kPngFastest)) {
        return {};
    }
    const QSizeF shown = image.deviceIndependentSize();
    return {bytes.toStdString(), static_cast<int>(std::lround(shown.width())),
            static_cast<int>(std::lround(shown.height()))};
}

ReportPicture QtReportPictures::Circuit(const Workspace& ws) {
    return ToReportPicture(CircuitPaint(ws));
}

ReportPicture QtReportPictures::Equation(const Workspace& ws, int which) {
    return ToReportPicture(ReportEquationPicture(ws, which));
}

} // namespace ampora::ui
