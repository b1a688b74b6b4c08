#include "ui/drawing_warnings_note.h"

#include "ui/palette.h"

#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>

namespace ampora::ui {

namespace {

// Dark red: it must be read before "Next >", but it is not a refusal.
constexpr int kWarningColour = 4;

} // namespace

QWidget* MakeDrawingWarningsNote(QWidget* parent, QLabel*& note) {
    auto* scroller = new QScrollArea(parent);
    scroller->setObjectName(QStringLiteral("scrDrawingWarnings"));
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    note = new QLabel(scroller);
    note->setObjectName(QStringLiteral("lblDrawingWarnings"));
    note->setWordWrap(true);
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    note->setTextFormat(Qt::PlainText);
    QPalette colours = note->palette();
    colours.setColor(QPalette::WindowText, QBColor(kWarningColour));
    note->setPalette(colours);
    scroller->setWidget(note);
    return scroller;
}

void ShowDrawingWarnings(QLabel* note, const std::vector<DrawingWarning>& warnings) {
    QString text;
    for (std::size_t k = 0; k < warnings.size(); ++k) {
        if (k > 0) {
            text += QStringLiteral("\n\n");
        }
        text += QString::number(k + 1) + QStringLiteral(". ") +
                QString::fromStdString(warnings[k].text);
    }
    note->setText(text);
}

void PaintWarnedDevices(QPainter& painter, const Workspace& ws) {
    const auto& warnings = ws.Topology.Warnings;
    if (warnings.empty()) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    for (std::size_t k = 0; k < warnings.size(); ++k) {
        const int slot = warnings[k].slot;
        if (!Slots<Element, kMaxElements>::Holds(slot)) {
            continue;
        }
        const Element& e = ws.Circuit.Elements[slot];
        const QPointF centre(e.X, e.Y);
        painter.setPen(QPen(QBColor(kWarningColour), 2, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(centre, 24, 24);
        // The number sits on the ring's upper left, where it covers no wire of the device.
        const QRectF badge(e.X - 32, e.Y - 32, 16, 16);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QBColor(kWarningColour));
        painter.drawEllipse(badge);
        painter.setPen(Qt::white);
        painter.drawText(badge, Qt::AlignCenter, QString::number(k + 1));
    }
    painter.restore();
}

} // namespace ampora::ui
