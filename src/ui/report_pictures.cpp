#include "ui/report_pictures.h"

#include "ui/circuit_paint.h"
#include "ui/equation_pictures.h"

#include <QBuffer>
#include <cmath>

namespace ampora::ui {

namespace {

constexpr int kPngFastest = 90;  // Qt's PNG "quality" 90 is zlib level 1
constexpr qreal kPrintScale = 2; // device pixels per pixel: sharp on paper

} // namespace

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
    return ToReportPicture(CircuitPaint(ws, kPrintScale));
}

ReportPicture QtReportPictures::Equation(const Workspace& ws, int which) {
    return ToReportPicture(EquationPicture(ws, which, kPrintScale));
}

} // namespace ampora::ui
