#pragma once
// The equations window: a tab with the prose that counts unknowns and equations, a tab that
// sets out the equations, the augmented matrix, its reduced form and the solutions, and a tab
// that goes through the elimination one row operation at a time.

#include <QImage>
#include <QWidget>
#include <array>

class QLabel;
class QPlainTextEdit;
class QScrollArea;
class QTabWidget;
class QTableWidget;

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

class CheckWorkTab;
class RowOperationsTab;

class EquationsWindow : public QWidget {
    Q_OBJECT

  public:
    explicit EquationsWindow(const Workspace& workspace, QWidget* parent = nullptr);

    // Fills both tabs from the workspace: after "Next >" on step 2, and again whenever the
    // significant figures or the font set change.
    void Rebuild();

    // The two pictures as last drawn: 1 the equations as first written, 2 collected.
    QImage Picture(int which) const;

    // Before the window is shown: widens it (and lengthens it, up to half the screen) so that
    // the equations, the matrices and the solutions fit without sideways scrolling, as far
    // as the screen allows, and brings it wholly onto the screen when it was made larger.
    void FitToContents();

    // A newly solved circuit is read from the top of both tabs.
    void ScrollToTop();

    // In practice the equations and solutions stay hidden, and "Check my work" is shown,
    // until the student has every equation right or asks for the answers.
    void SetAnswersHidden(bool hidden);
    bool AnswersHidden() const { return answersHidden_; }

  signals:
    void answersShown();

  private:
    QLabel* Caption(int index) const;
    QSize PageSize() const;
    void FillGrid(QTableWidget* grid, bool reduced);
    void FillSolutions();
    void ShowPicture(QLabel* label, const QImage& image);

    const Workspace& workspace_;
    QTabWidget* tabs_ = nullptr;
    QScrollArea* scroll_ = nullptr; // the equations tab
    QWidget* page_ = nullptr;       // the page it scrolls
    QPlainTextEdit* txtCounting_ = nullptr;
    std::array<QLabel*, 8> captions_{}; // 1..7; 2 stays unused
    QLabel* picEquations1_ = nullptr;
    QLabel* picEquations2_ = nullptr;
    QTableWidget* grdMatrix_ = nullptr;
    QTableWidget* grdRREF_ = nullptr;
    QTableWidget* grdSolutions_ = nullptr;
    QLabel* lblBatteryCurrents_ = nullptr;
    RowOperationsTab* rowOperations_ = nullptr;
    QImage picture1_;
    QImage picture2_;
    QScrollArea* checkScroll_ = nullptr; // the "Check my work" tab
    CheckWorkTab* checkWork_ = nullptr;
    bool answersHidden_ = false;
};

} // namespace ampora::ui
