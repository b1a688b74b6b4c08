#pragma once
// The About box: the program's picture, name and version, and one button that closes it.

#include <QDialog>

namespace ampora::ui {

class AboutBox : public QDialog {
    Q_OBJECT

  public:
    explicit AboutBox(QWidget* parent = nullptr);
};

// Shows the About box and returns when the user has closed it.
void ShowAboutBox(QWidget* parent);

// "Version " and the version the program was built as, e.g. "Version 0.1.0".
QString VersionText();

} // namespace ampora::ui
