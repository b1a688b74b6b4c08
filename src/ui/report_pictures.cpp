#include "ui/report_pictures.h"

#include "ui/circuit_paint.h"
#include "ui/equation_pictures.h"

#include <QBuffer>
#include <cmath>

namespace ampora::ui {

namespace {

// Qt's PNG "quality" is the inverse of zlib's level: 0 packs hardest. The drawings are flat
// colours on white, which pack to a tenth of their raw size and less.
constexpr int kPngSmallest = 0;
constexpr qreal kPrintScale = 2; // device pixels per pixel: sharp on paper

} // namespace

ReportPicture ToReportPicture(const QImage& image) {
    if (image.isNull()) {
        return {};
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG", kPngSmallest)) {
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
