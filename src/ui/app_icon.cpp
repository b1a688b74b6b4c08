#include "ui/app_icon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace ampora::ui {

QIcon AppIcon() {
    // Rendered here rather than through Qt's icon plugins, so the picture appears even on a
    // system where those plugins are missing.
    QSvgRenderer renderer(QStringLiteral(":/ampora/icons/ampora.svg"));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace ampora::ui
