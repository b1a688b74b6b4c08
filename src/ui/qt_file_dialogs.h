#pragma once
// The Open, Save As and Export matrix dialogs of the File menu.

#include "document/file_dialogs.h"

class QWidget;

namespace ampora::ui {

class QtFileDialogs : public FileDialogs {
  public:
    explicit QtFileDialogs(QWidget* parent) : parent_(parent) {}
    std::optional<std::string> AskOpenPath(const std::string& startFolder) override;
    std::optional<std::string> AskSavePath(const std::string& startFolder) override;
    std::optional<std::string> AskCsvPath(const std::string& startFolder) override;

  private:
    QWidget* parent_;
};

} // namespace ampora::ui
