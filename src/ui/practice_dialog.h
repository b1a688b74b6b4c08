#pragma once
// File > New practice circuit...: asks how many nodes, supernodes and current sources the
// new circuit should have, and says at once when the three cannot go together.

#include "practice/practice_shape.h"

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QSpinBox;

namespace ampora::ui {

class PracticeDialog : public QDialog {
    Q_OBJECT
  public:
    explicit PracticeDialog(const PracticeShape& shape, QWidget* parent = nullptr);

    PracticeShape Shape() const;

  private:
    void ShowRefusal();

    QSpinBox* nodes_;
    QSpinBox* superNodes_;
    QSpinBox* sources_;
    QLabel* refusal_;
    QDialogButtonBox* buttons_;
};

} // namespace ampora::ui
