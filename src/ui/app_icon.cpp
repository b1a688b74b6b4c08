#include "ui/app_icon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// The picture lives in a resource of the static ampora_ui library, which the linker only keeps
// when something asks for it by name; Q_INIT_RESOURCE must be called outside any namespace.
static void LoadIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace ampora::ui {

QIcon AppIcon() {
    LoadIconResources();
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
