#include "ui/qt_file_dialogs.h"

#include <QFileDialog>

namespace ampora::ui {

namespace {

const QString kFilters = QStringLiteral("All Files (*.*);;DC Ampora Files (*.amq)");
const QString kCircuitFilter = QStringLiteral("DC Ampora Files (*.amq)");

std::optional<std::string> Chosen(const QString& path) {
    if (path.isEmpty()) {
        return std::nullopt;
    }
    return path.toStdString();
}

} // namespace

std::optional<std::string> QtFileDialogs::AskOpenPath(const std::string& startFolder) {
    QString filter = kCircuitFilter;
    return Chosen(QFileDialog::getOpenFileName(
        parent_, QString(), QString::fromStdString(startFolder), kFilters, &filter));
}

std::optional<std::string> QtFileDialogs::AskSavePath(const std::string& startFolder) {
    QFileDialog dialog(parent_, QString(), QString::fromStdString(startFolder), kFilters);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectNameFilter(kCircuitFilter);
    dialog.setDefaultSuffix(QStringLiteral("amq"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return Chosen(dialog.selectedFiles().front());
}

std::optional<std::string> QtFileDialogs::AskCsvPath(const std::string& startFolder) {
    QFileDialog dialog(parent_, QString(), QString::fromStdString(startFolder),
                       QStringLiteral("CSV Files (*.csv)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return Chosen(dialog.selectedFiles().front());
}

} // namespace ampora::ui
