#include "ui/text_cursor_sink.h"

#include "report/palette.h"

#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextImageFormat>
#include <QUrl>

namespace ampora::ui {

namespace {

// A word processor's default tab stop, half an inch at 96 pixels to the inch.
constexpr qreal kTabStop = 48;
constexpr qreal kScreenDpi = 96;
constexpr int kPdfResolution = 600;
constexpr qreal kFooter = 24; // screen pixels under each page's text, for its number

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
    const QUrl name(QStringLiteral("ampora-report-picture-%1").arg(++pictures_));
    document_.addResource(QTextDocument::ImageResource, name, image);
    QTextImageFormat picture;
    picture.setName(name.toString());
    picture.setWidth(width);
    picture.setHeight(height);
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

bool WriteReportPdf(const RichTextDocument& report, const QString& path) {
    QPdfWriter writer(path);
    writer.setTitle(QStringLiteral("Ampora"));
    writer.setCreator(QStringLiteral("DC Ampora"));
    writer.setResolution(kPdfResolution);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(20, 18, 20, 18), QPageLayout::Millimeter));
    QPainter painter;
    if (!painter.begin(&writer)) {
        return false;
    }
    // Diagrams are line drawings: kept exact, not compressed as photographs.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.setRenderHint(QPainter::Antialiasing);

    QTextDocument document;
    TextCursorSink sink(document);
    CopyRuns(report, sink);
    // Laid out in screen pixels, as in the window, on pages the size of the printable area;
    // the layout then never splits a line or a picture over two pages.
    const qreal scale = kPdfResolution / kScreenDpi;
    const QRectF area = writer.pageLayout().paintRectPixels(kPdfResolution);
    const QSizeF page(area.width() / scale, (area.height() - kFooter * scale) / scale);
    document.setPageSize(page);
    const int pages = document.pageCount();
    QFont footer(QStringLiteral("Arial"));
    footer.setPointSizeF(9);
    for (int k = 0; k < pages; ++k) {
        if (k > 0) {
            writer.newPage();
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

} // namespace ampora::ui
