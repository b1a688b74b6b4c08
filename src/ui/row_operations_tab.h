#pragma once
// The "Row operations" tab of the equations window: the Gauss-Jordan elimination one row
// operation at a time, each with the whole matrix after it, in decimals or exact fractions.

#include "equations/row_operation_steps.h"

#include <QImage>
#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;
class QScrollArea;

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

class RowOperationsTab : public QWidget {
    Q_OBJECT

  public:
    explicit RowOperationsTab(const Workspace& workspace, QWidget* parent = nullptr);

    // After a solution or a change of figures or font set, on the same step as far as the
    // new steps reach; `density` is the screen's pixel ratio. A new solution then goes to
    // ShowStep(0).
    void Rebuild(qreal density);

    int Step() const { return step_; }
    int StepCount() const { return static_cast<int>(shown_.steps.size()); }
    void ShowStep(int step);
    void SetFractions(bool on);
    bool FractionsShown() const { return shown_.fractions; }
    QImage Picture() const { return picture_; }

  private:
    void Refill();

    const Workspace& workspace_;
    ShownSteps shown_;
    int step_ = 0;
    qreal density_ = 1;
    QImage picture_;
    QLabel* lblStep_ = nullptr;
    QLabel* lblNote_ = nullptr;
    QLabel* picStep_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    QCheckBox* chkFractions_ = nullptr;
    QPushButton* cmdFirst_ = nullptr;
    QPushButton* cmdPrevious_ = nullptr;
    QPushButton* cmdNext_ = nullptr;
    QPushButton* cmdLast_ = nullptr;
};

// One step set as a picture: the operation's words with its number set as the equations
// set numbers (a fraction stacked), then the matrix in brackets with the constants after a
// bar, the changed rows shaded and the pivot boxed; after the last step, the solutions.
QImage RowOperationPicture(const Workspace& ws, const ShownSteps& shown, int step, qreal scale);

} // namespace ampora::ui
