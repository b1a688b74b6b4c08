#pragma once
// Message boxes titled "Ampora" and the positioned input dialog, for the core's questions.

#include "tables/prompts.h"

#include <QPoint>
#include <functional>

class QWidget;

namespace ampora::ui {

class QtPrompts : public Prompts {
  public:
    // `toGlobal` turns canvas units into a screen position for the input dialog.
    QtPrompts(QWidget* parent, std::function<QPoint(float, float)> toGlobal);

    void ShowMessage(const std::string& text, MessageIcon icon) override;
    bool AskYesNo(const std::string& text) override;
    std::string AskText(const std::string& prompt, const std::string& defaultText, float left,
                        float top) override;

  private:
    QWidget* parent_;
    std::function<QPoint(float, float)> toGlobal_;
};

} // namespace ampora::ui
