#include "ui/install_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ampora::ui {

namespace {

QString ShippedDir(const QString& name) {
    const QDir binary(QCoreApplication::applicationDirPath());
    const QString installed = binary.absoluteFilePath("../share/ampora/" + name);
    if (QFileInfo(installed).isDir()) {
        return QDir::cleanPath(installed);
    }
    return QDir::cleanPath(QStringLiteral(AMPORA_SOURCE_DIR) + "/" + name);
}

} // namespace

QString HelpDir() { return ShippedDir(QStringLiteral("help")); }
QString ExamplesDir() { return ShippedDir(QStringLiteral("examples")); }

} // namespace ampora::ui
