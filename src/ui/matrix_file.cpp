#include "ui/matrix_file.h"

#include "document/safe_file_write.h"
#include "equations/matrix_export.h"
#include "tables/workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace ampora::ui {

QString MatrixFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Ampora/ampora.gj");
}

void UpdateMatrixFile(const Workspace& ws) {
    const int n = ws.Equations.NumUnknowns;
    if (n <= 0) {
        return;
    }
    const std::string text = GjText(ws.Equations.Augmented, n);
    const QString path = MatrixFilePath();
    QFile old(path);
    if (old.open(QIODevice::ReadOnly) && old.readAll() == QByteArray::fromStdString(text)) {
        return;
    }
    old.close();
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        return;
    }
    WriteFileSafely(QFile::encodeName(path).toStdString(), text);
}

} // namespace ampora::ui
