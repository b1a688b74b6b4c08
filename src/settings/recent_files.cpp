#include "settings/recent_files.h"

#include <filesystem>
#include <fstream>

namespace ampora {

namespace {

constexpr const char* kRecentSection = "Recent Files";

std::string KeyOf(int index) {
    return "RecentFile" + std::to_string(index);
}

} // namespace

RecentFiles LoadRecentFiles(const SettingsStore& store) {
    RecentFiles files;
    for (int i = 0; i < kRecentFileCount; ++i) {
        files[static_cast<std::size_t>(i)] = store.Get(kRecentSection, KeyOf(i + 1));
    }
    return files;
}

RecentFiles AddRecentFile(SettingsStore& store, const std::string& path) {
    RecentFiles files = LoadRecentFiles(store);
    std::size_t found = kRecentFileCount - 1; // not found shifts the whole list
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (files[i] == path) {
            found = i;
            break;
        }
    }
    for (std::size_t i = found; i > 0; --i) {
        files[i] = files[i - 1];
    }
    files[0] = path;
    for (int i = 0; i < kRecentFileCount; ++i) {
        store.Set(kRecentSection, KeyOf(i + 1), files[static_cast<std::size_t>(i)]);
    }
    return files;
}

std::string RecentFolder(const SettingsStore& store, const std::string& programFolder) {
    const std::string newest = store.Get(kRecentSection, KeyOf(1));
    if (newest.empty()) {
        return programFolder;
    }
    const std::size_t slash = newest.rfind('/');
    if (slash == std::string::npos) {
        return programFolder;
    }
    // The folder ends one character before the first place the file's name occurs, so a
    // folder whose own name contains the file name is cut there.
    const std::string name = newest.substr(slash + 1);
    const std::size_t at = name.empty() ? slash + 1 : newest.find(name);
    if (at == 0) {
        return programFolder;
    }
    const std::string folder = newest.substr(0, at - 1);
    return folder.empty() ? "/" : folder;
}

bool FileExists(const std::string& path) {
    std::error_code error;
    if (path.empty() || std::filesystem::is_directory(path, error)) {
        return false;
    }
    std::ifstream in(path, std::ios::binary);
    return static_cast<bool>(in);
}

} // namespace ampora
