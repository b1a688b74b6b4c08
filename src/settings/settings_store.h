#pragma once
// The per-user settings store: string values addressed by section and key, under the
// application "Ampora". A missing key reads as the empty string.

#include <string>

namespace ampora {

struct SettingsStore {
    virtual ~SettingsStore() = default;
    virtual std::string Get(const std::string& section, const std::string& key) const = 0;
    virtual void Set(const std::string& section, const std::string& key,
                     const std::string& value) = 0;
};

} // namespace ampora
