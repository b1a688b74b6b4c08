// Practice: step 3 keeps its results to itself until the student has written every
// equation right in the equations window, or asks for the answers there.

#include "analysis/result_labels.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/equations_window.h"
#include "ui/main_window.h"

#include <QAbstractButton>
#include <QAction>
#include <QButtonGroup>

namespace ampora::ui {

namespace {

constexpr const char* kPracticeStatus =
    " Step 3: write the equations in the \"Check my work\" tab of the equations window.  ";

} // namespace

void MainWindow::mnuPractice_Click(bool checked) {
    workspace_.Preferences.PracticeHideAnswers = checked;
    mnuPractice_->setChecked(checked);
    SetHint(QString());
    if (workspace_.Step == 3) {
        HideAnswers(checked);
    }
}

void MainWindow::HideAnswers(bool hidden) {
    const bool revealed = answersHidden_ && !hidden;
    answersHidden_ = hidden;
    canvas_->SetResultsHidden(hidden);
    frmEquations_->SetAnswersHidden(hidden);
    for (int view = kViewCurrents; view <= kViewPower; ++view) {
        if (QAbstractButton* button = viewButtons_->button(view)) {
            button->setEnabled(!hidden);
        }
    }
    if (hidden) {
        workspace_.ViewMode = kViewValues;
    }
    EnterStepPanel();
    if (workspace_.Step != 3) {
        return;
    }
    if (hidden) {
        SetStepStatus(QString::fromLatin1(kPracticeStatus));
    } else if (revealed) {
        WriteResultLabels();
    }
}

} // namespace ampora::ui
