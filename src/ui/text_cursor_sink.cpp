#include "ui/text_cursor_sink.h"

#include "report/palette.h"
#include "report/picture_fit.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>

#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextImageFormat>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <vector>

namespace ampora::ui {

namespace {

// A word processor's default tab stop, half an inch at 96 pixels to the inch.
constexpr qreal kTabStop = 48;
constexpr qreal kScreenDpi = 96;
constexpr int kPdfResolution = 600;
constexpr qreal kFooter = 24; // screen pixels under each page's text, for its number

// What a report picture's format remembers beside the size it is shown at.
constexpr int kNaturalWidth = QTextFormat::UserProperty + 1;
constexpr int kNaturalHeight = QTextFormat::UserProperty + 2;
constexpr int kSourceName = QTextFormat::UserProperty + 3;

QTextCharFormat CharFormat(const TextFormat& format) {
    QTextCharFormat qt;
    qt.setFontFamilies({QString::fromStdString(format.FontName)});
    qt.setFontPointSize(format.FontSize > 0 ? format.FontSize : 10);
    qt.setFontWeight(format.Bold ? QFont::Bold : QFont::Normal);
    qt.setFontItalic(format.Italic);
    qt.setFontUnderline(format.Underline);
    const int colour = format.Colour >= 0 && format.Colour < kPaletteSize ? format.Colour : 0;
    qt.setForeground(QColor::fromRgb(QBColor(colour)));
    return qt;
}

} // namespace

TextCursorSink::TextCursorSink(QTextDocument& document) : document_(document), cursor_(&document) {
    // The box is read-only: an undo history would only hold a second copy of the report.
    document_.setUndoRedoEnabled(false);
    QTextOption option = document_.defaultTextOption();
    option.setTabStopDistance(kTabStop);
    document_.setDefaultTextOption(option);
    cursor_.movePosition(QTextCursor::End);
}

void TextCursorSink::InsertText(std::string_view text) {
    const QTextCharFormat format = CharFormat(format_);
    QString run;
    const auto flush = [&] {
        if (!run.isEmpty()) {
            cursor_.insertText(run, format);
            run.clear();
        }
    };
    for (const QChar c : QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))) {
        // The LF of a CR LF pair split over two calls still makes one break.
        if (c == u'\n' && afterCarriageReturn_) {
            afterCarriageReturn_ = false;
            continue;
        }
        afterCarriageReturn_ = c == u'\r';
        if (c == u'\r' || c == u'\n') {
            flush();
            cursor_.insertBlock(cursor_.blockFormat(), format);
        } else {
            run += c;
        }
    }
    flush();
}

void TextCursorSink::InsertPicture(const std::string& png, int width, int height) {
    afterCarriageReturn_ = false;
    QImage image;
    if (!image.loadFromData(reinterpret_cast<const uchar*>(png.data()),
                            static_cast<qsizetype>(png.size()), "PNG")) {
        return;
    }
    const QString name = QStringLiteral("ampora-report-picture-%1").arg(++pictures_);
    document_.addResource(QTextDocument::ImageResource, QUrl(name), image);
    QTextImageFormat picture;
    picture.setName(name);
    picture.setWidth(width);
    picture.setHeight(height);
    picture.setProperty(kNaturalWidth, static_cast<double>(width));
    picture.setProperty(kNaturalHeight, static_cast<double>(height));
    picture.setProperty(kSourceName, name);
    cursor_.insertImage(picture);
}

std::size_t TextCursorSink::Length() const {
    // The document always holds one more (final) paragraph end than was inserted.
    return static_cast<std::size_t>(document_.characterCount() - 1);
}

void CopyRuns(const RichTextDocument& from, RichTextSink& to) {
    for (const RichTextRun& run : from.Runs()) {
        to.SetFormat(run.Format);
        if (run.IsPicture()) {
            to.InsertPicture(run.Png, run.Width, run.Height);
        } else {
            to.InsertText(run.Text);
        }
    }
    to.SetFormat(from.Format());
}

void FitPictures(QTextDocument& document, qreal textWidth, qreal devicePixelRatio) {
    const double room = PictureRoom(textWidth, kTabStop);
    struct Change {
        int position;
        QTextImageFormat format;
    };
    std::vector<Change> changes;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            if (!format.isImageFormat() || !format.hasProperty(kSourceName)) {
                continue;
            }
            QTextImageFormat picture = format.toImageFormat();
            const qreal width = picture.doubleProperty(kNaturalWidth);
            const qreal height = picture.doubleProperty(kNaturalHeight);
            const QString source = picture.stringProperty(kSourceName);
            PictureSize shown = FitPicture(width, height, room);
            QString name = source;
            if (shown.Width < width) {
                // Whole pixels, so the bitmap below is drawn one to one.
                shown = {std::floor(shown.Width), std::max(1.0, std::round(shown.Height))};
                if (devicePixelRatio > 0) {
                    // Scaled once, smoothly, to the pixels it takes on the screen: a drawing
                    // shrunk by the painter point by point would lose its thin lines.
                    name = source + QStringLiteral("-shown");
                    const QImage full =
                        document.resource(QTextDocument::ImageResource, QUrl(source))
                            .value<QImage>();
                    QImage scaled = full.scaled(
                        QSize(static_cast<int>(std::ceil(shown.Width * devicePixelRatio)),
                              static_cast<int>(std::ceil(shown.Height * devicePixelRatio))),
                        Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
                    scaled.setDevicePixelRatio(devicePixelRatio);
                    document.addResource(QTextDocument::ImageResource, QUrl(name), scaled);
                }
            }
            if (picture.name() == name && picture.width() == shown.Width &&
                picture.height() == shown.Height) {
                continue;
            }
            picture.setName(name);
            picture.setWidth(shown.Width);
            picture.setHeight(shown.Height);
            changes.push_back({fragment.position(), picture});
        }
    }
    for (const Change& change : changes) {
        QTextCursor cursor(&document);
        cursor.setPosition(change.position);
        cursor.setPosition(change.position + 1, QTextCursor::KeepAnchor);
        cursor.setCharFormat(change.format);
    }
}

namespace {

enum class BlockKind { Blank, Heading, Text, Picture, TableRow };

BlockKind KindOf(const QTextBlock& block) {
    bool text = false;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (fragment.charFormat().isImageFormat()) {
            return BlockKind::Picture;
        }
        text = text || !fragment.text().trimmed().isEmpty();
    }
    if (!text) {
        return BlockKind::Blank;
    }
    // A table's rows start with a tab; a heading starts in bold.
    if (block.text().startsWith(u'\t')) {
        return BlockKind::TableRow;
    }
    return block.begin().fragment().charFormat().fontWeight() >= QFont::Bold ? BlockKind::Heading
                                                                             : BlockKind::Text;
}

// Whether a block belongs on the page of the next block that is not blank: a heading with
// what follows it, a sentence with the picture or table it introduces, a table's rows with
// one another.
bool KeepsWithNext(BlockKind kind, BlockKind next) {
    switch (kind) {
    case BlockKind::Heading:
        return next != BlockKind::Blank;
    case BlockKind::Text:
        return next == BlockKind::Picture || next == BlockKind::TableRow;
    case BlockKind::TableRow:
        return next == BlockKind::TableRow;
    default:
        return false;
    }
}

QTextBlock NextNonBlank(QTextBlock block) {
    block = block.next();
    while (block.isValid() && KindOf(block) == BlockKind::Blank) {
        block = block.next();
    }
    return block;
}

} // namespace

void KeepTogetherOnPages(QTextDocument& document) {
    const qreal page = document.pageSize().height();
    QAbstractTextDocumentLayout* layout = document.documentLayout();
    QTextBlock first = document.begin();
    while (first.isValid()) {
        // The group runs from first to last, every block in it keeping with the next.
        QTextBlock last = first;
        for (QTextBlock next = NextNonBlank(last);
             next.isValid() && KeepsWithNext(KindOf(last), KindOf(next));
             next = NextNonBlank(last)) {
            last = next;
        }
        if (last != first) {
            const qreal top = layout->blockBoundingRect(first).top();
            const qreal bottom = layout->blockBoundingRect(last).bottom();
            const bool split = std::floor(top / page) != std::floor((bottom - 1) / page);
            // A group taller than a page is split wherever it falls.
            if (split && bottom - top <= page) {
                QTextBlockFormat format = first.blockFormat();
                format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                QTextCursor(first).setBlockFormat(format);
                // Everything after it moves: laid out again in full, since the layout left
                // to itself lays out only as far as it was asked.
                document.markContentsDirty(first.position(),
                                           document.characterCount() - first.position());
            }
        }
        first = last.next();
    }
}

QPageLayout ReportPageLayout() {
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(20, 18, 20, 18),
                       QPageLayout::Millimeter);
}

bool PaintReportPages(const RichTextDocument& report, QPagedPaintDevice& device, int resolution) {
    QPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    // Diagrams are line drawings: kept exact, not compressed as photographs.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);

    QTextDocument document;
    TextCursorSink sink(document);
    CopyRuns(report, sink);
    // Laid out in screen pixels, as in the window, on pages the size of the printable area;
    // the layout then never splits a line or a picture over two pages.
    const qreal scale = resolution / kScreenDpi;
    const QRectF area = device.pageLayout().paintRectPixels(resolution);
    const QSizeF page(area.width() / scale, (area.height() - kFooter * scale) / scale);
    document.setPageSize(page);
    // The pictures keep all their pixels: the page shows them smaller, and sharper.
    FitPictures(document, page.width() - 2 * document.documentMargin(), 0);
    KeepTogetherOnPages(document);
    // Counted from where the last block ends: the document's own count can miss the pages
    // that the page breaks above added.
    const qreal end = document.documentLayout()->blockBoundingRect(document.lastBlock()).bottom();
    const int pages =
        std::max(document.pageCount(), static_cast<int>(std::floor((end - 1) / page.height())) + 1);
    QFont footer(QStringLiteral("Arial"));
    footer.setPointSizeF(9);
    for (int k = 0; k < pages; ++k) {
        if (k > 0) {
            device.newPage();
        }
        painter.save();
        painter.scale(scale, scale);
        const QRectF shown(0, k * page.height(), page.width(), page.height());
        painter.translate(0, -shown.top());
        document.drawContents(&painter, shown);
        painter.restore();
        painter.setFont(footer);
        painter.drawText(QRectF(0, area.height() - kFooter * scale, area.width(), kFooter * scale),
                         Qt::AlignRight | Qt::AlignBottom, QString::number(k + 1));
    }
    return painter.end();
}

std::string ReportPdf(const RichTextDocument& report) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(QStringLiteral("Ampora"));
    writer.setCreator(QStringLiteral("DC Ampora"));
    writer.setResolution(kPdfResolution);
    writer.setPageLayout(ReportPageLayout());
    if (!PaintReportPages(report, writer, kPdfResolution)) {
        return {};
    }
    return bytes.toStdString();
}

FileWriteResult WriteReportPdf(const RichTextDocument& report, const QString& path) {
    const std::string pdf = ReportPdf(report);
    if (pdf.empty()) {
        return {false, "the PDF could not be drawn"};
    }
    return WriteFileSafely(path.toStdString(), pdf);
}

} // namespace ampora::ui
