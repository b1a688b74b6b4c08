#pragma once
// The program's own text-input dialog, placed at a given screen position next to the
// device or node it asks about. Enter answers OK, Escape answers Cancel.

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace ampora::ui {

class InputDialog : public QDialog {
    Q_OBJECT

  public:
    InputDialog(QWidget* parent, const QString& prompt, const QString& defaultText);
    QString Text() const;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QLabel* Label1_;
    QLineEdit* txtInput_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
};

// Shows the dialog with its top-left corner at `topLeft` (global coordinates, kept on the
// screen) and returns the typed text on OK, "" on Cancel or when closed.
QString InputBox2(QWidget* parent, const QString& prompt, const QString& defaultText,
                  QPoint topLeft);

} // namespace ampora::ui
