#include "ui/qt_settings_store.h"

namespace ampora::ui {

namespace {

QString KeyPath(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + QLatin1Char('/') + QString::fromStdString(key);
}

} // namespace

// An INI file in the user's configuration folder: readable, and the same on every desktop.
QtSettingsStore::QtSettingsStore()
    : settings_(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Ampora"),
                QStringLiteral("Ampora")) {}

std::string QtSettingsStore::Get(const std::string& section, const std::string& key) const {
    const QVariant value = settings_.value(KeyPath(section, key));
    // A hand-edited file can hold a list where a string belongs; that reads as missing.
    if (!value.isValid() || value.typeId() == QMetaType::QStringList) {
        return "";
    }
    return value.toString().toStdString();
}

void QtSettingsStore::Set(const std::string& section, const std::string& key,
                          const std::string& value) {
    settings_.setValue(KeyPath(section, key), QString::fromStdString(value));
}

} // namespace ampora::ui
