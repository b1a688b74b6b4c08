#pragma once
// The Open and Save As dialogs as the file commands need them. Both offer the filters
// "All Files (*.*)" and "DC Ampora Files (*.amq)" with the second selected, start in the
// given folder and give nothing when the user cancels.

#include <optional>
#include <string>

namespace ampora {

struct FileDialogs {
    virtual ~FileDialogs() = default;
    virtual std::optional<std::string> AskOpenPath(const std::string& startFolder) = 0;
    virtual std::optional<std::string> AskSavePath(const std::string& startFolder) = 0;
    // A Save As dialog for a spreadsheet's file: the filter "CSV Files (*.csv)", ".csv"
    // added to a name without it.
    virtual std::optional<std::string> AskCsvPath(const std::string& startFolder) = 0;
};

} // namespace ampora
