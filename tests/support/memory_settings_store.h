#pragma once
// A settings store held in memory, with a readable dump of everything written.

#include "document/file_dialogs.h"
#include "settings/settings_store.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ampora::test {

struct MemorySettingsStore : SettingsStore {
    std::map<std::string, std::string> values; // "Section/Key" -> value

    std::string Get(const std::string& section, const std::string& key) const override {
        const auto found = values.find(section + "/" + key);
        return found == values.end() ? "" : found->second;
    }
    void Set(const std::string& section, const std::string& key,
             const std::string& value) override {
        values[section + "/" + key] = value;
    }
    std::string Dump() const {
        std::string out;
        for (const auto& [key, value] : values) {
            out += key + "=" + value + "\n";
        }
        return out;
    }
};

// File dialogs answered from a queue; an empty queue or nullopt is a cancelled dialog.
struct ScriptedFileDialogs : FileDialogs {
    std::deque<std::optional<std::string>> answers;
    std::vector<std::string> shown; // "open in FOLDER" / "save in FOLDER"

    std::optional<std::string> Next() {
        if (answers.empty()) {
            return std::nullopt;
        }
        auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> AskOpenPath(const std::string& startFolder) override {
        shown.push_back("open in " + startFolder);
        return Next();
    }
    std::optional<std::string> AskSavePath(const std::string& startFolder) override {
        shown.push_back("save in " + startFolder);
        return Next();
    }
    std::optional<std::string> AskCsvPath(const std::string& startFolder) override {
        shown.push_back("csv in " + startFolder);
        return Next();
    }
};

} // namespace ampora::test
