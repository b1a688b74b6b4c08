#pragma once
// The settings store kept by QSettings under organisation and application "Ampora", one
// group per section.

#include "settings/settings_store.h"

#include <QSettings>

namespace ampora::ui {

class QtSettingsStore : public SettingsStore {
  public:
    QtSettingsStore();
    std::string Get(const std::string& section, const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;
    void Sync() { settings_.sync(); }

  private:
    // Qt's QSettings is not const-correct for reading.
    mutable QSettings settings_;
};

} // namespace ampora::ui
