#pragma once
// The four circuit files most recently opened or saved, newest first, kept in the
// settings store under "Recent Files" as "RecentFile1" .. "RecentFile4".

#include "settings/settings_store.h"

#include <array>
#include <string>

namespace ampora {

inline constexpr int kRecentFileCount = 4;
using RecentFiles = std::array<std::string, kRecentFileCount>;

RecentFiles LoadRecentFiles(const SettingsStore& store);

// Puts `path` at the top (compared exactly, letter case included), keeps the others in
// order, drops the oldest when the list is full, writes the list back and returns it.
RecentFiles AddRecentFile(SettingsStore& store, const std::string& path);

// The folder in which the file dialogs start: that of the newest recent file, or
// `programFolder` while the list is empty.
std::string RecentFolder(const SettingsStore& store, const std::string& programFolder);

// Whether the file can be opened for reading.
bool FileExists(const std::string& path);

} // namespace ampora
