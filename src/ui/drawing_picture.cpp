#include "ui/drawing_picture.h"

#include "editor/value_labels.h"
#include "tables/workspace.h"
#include "ui/circuit_paint.h"
#include "ui/diagram_painter.h"

#include <QBuffer>
#include <QMimeData>
#include <QPainter>
#include <QSvgGenerator>
#include <cmath>

namespace ampora::ui {

namespace {

// Canvas units are the pixels of a 96 dpi screen.
constexpr double kScreenDpi = 96;
constexpr double kMetresPerInch = 0.0254;
// The clipboard's image: sharp when pasted into a document and printed.
constexpr qreal kClipboardScale = 2;

// The step's look, minus what belongs to the window alone (the frames of clickable names).
DiagramLook PictureLook(const Workspace& ws) {
    return DiagramLook{ws.Step != kStepEdit, false};
}

QByteArray SvgOf(const Workspace& ws, const DiagramLabels& labels) {
    float top = 0, bottom = 0, left = 0, right = 0;
    DiagramExtents(ws, labels, top, bottom, left, right);
    const qreal width = right - left + 2;
    const qreal height = bottom - top + 2;
    if (width <= 0 || height <= 0) {
        return {};
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setTitle(QStringLiteral("DC Ampora drawing"));
    const QSize size(static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height)));
    generator.setSize(size);
    generator.setViewBox(QRectF(QPointF(0, 0), size));
    generator.setResolution(static_cast<int>(kScreenDpi));
    QPainter painter;
    if (!painter.begin(&generator)) {
        return {};
    }
    painter.fillRect(QRectF(QPointF(0, 0), size), Qt::white);
    painter.translate(-left, -top);
    PaintDiagramOn(painter, ws, labels, PictureLook(ws));
    if (!painter.end()) {
        return {};
    }
    return bytes;
}

} // namespace

DiagramLabels StepLabels(const Workspace& ws, const EditorState* editor, bool resultsHidden) {
    if (ws.Step == kStepEdit) {
        std::vector<std::string> texts(static_cast<std::size_t>(ws.Circuit.NumElements) + 1);
        for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
            const Element& e = ws.Circuit.Elements[slot];
            if (e.Kind != kEmpty) {
                texts[static_cast<std::size_t>(slot)] =
                    ValueLabelText(e, editor != nullptr ? editor->ValueText[slot] : std::string());
            }
        }
        return LayOutDiagram(ws, texts, false);
    }
    const int view =
        ws.Step == kStepResults && !resultsHidden ? int{ws.ViewMode} : int{kViewValues};
    return LayOutView(ws, view, ws.Preferences.SigFigs);
}

QImage DrawingImage(const Workspace& ws, const DiagramLabels& labels, qreal scale) {
    return DiagramImage(ws, labels, PictureLook(ws), scale);
}

std::string DrawingSvg(const Workspace& ws, const DiagramLabels& labels) {
    return SvgOf(ws, labels).toStdString();
}

std::string DrawingPng(const Workspace& ws, const DiagramLabels& labels) {
    QImage image = DrawingImage(ws, labels, kPictureDpi / kScreenDpi);
    if (image.isNull()) {
        return {};
    }
    const int dotsPerMetre = static_cast<int>(std::lround(kPictureDpi / kMetresPerInch));
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        return {};
    }
    return bytes.toStdString();
}

std::string DrawingBytes(const Workspace& ws, const DiagramLabels& labels,
                         DrawingFileFormat format) {
    return format == DrawingFileFormat::Svg ? DrawingSvg(ws, labels) : DrawingPng(ws, labels);
}

QMimeData* DrawingMimeData(const Workspace& ws, const DiagramLabels& labels) {
    const QImage image = DrawingImage(ws, labels, kClipboardScale);
    if (image.isNull()) {
        return nullptr;
    }
    auto* data = new QMimeData;
    data->setImageData(image);
    data->setData(QStringLiteral("image/svg+xml"), SvgOf(ws, labels));
    return data;
}

} // namespace ampora::ui
