#include "ui/install_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ampora::ui {

QString ShippedDir(const QString& binaryDir, const QString& name) {
    const QDir binary(binaryDir);
    const QString installed = binary.absoluteFilePath("../share/ampora/" + name);
    if (QFileInfo(installed).isDir()) {
        return QDir::cleanPath(installed);
    }
    return QDir::cleanPath(QStringLiteral(AMPORA_SOURCE_DIR) + "/" + name);
}

QString HelpDir() {
    return ShippedDir(QCoreApplication::applicationDirPath(), QStringLiteral("help"));
}
QString ExamplesDir() {
    return ShippedDir(QCoreApplication::applicationDirPath(), QStringLiteral("examples"));
}

} // namespace ampora::ui
