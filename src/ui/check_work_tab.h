#pragma once
// The "Check my work" tab of the equations window: the student types the equation of each
// node or supernode and the value found for each unknown, and Check says whether it is
// right and, if not, what is wrong.

#include <QWidget>

#include <string>
#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

class CheckWorkTab : public QWidget {
    Q_OBJECT

  public:
    explicit CheckWorkTab(const Workspace& workspace, QWidget* parent = nullptr);

    // One line per equation and per unknown of the solved circuit. What the student typed
    // stays when the same equations are shown again (after a change of the figures or the
    // font); a new circuit starts empty.
    void Rebuild(const QFont& font);

    // While the answers are hidden the tab offers "Show the answers".
    void SetAnswersHidden(bool hidden);

  signals:
    // Every equation is right, or the student pressed "Show the answers".
    void answersEarned();

  private:
    struct EquationLine {
        QLineEdit* field = nullptr;
        QLabel* verdict = nullptr;
        bool right = false;
    };
    struct ValueLine {
        QLineEdit* field = nullptr;
        QLabel* verdict = nullptr;
    };

    void CheckEquationAt(int index);
    void CheckValueAt(int index);
    void ShowVerdict(QLabel* label, bool right, const QString& text);
    void ClearLines();

    const Workspace& workspace_;
    QGridLayout* grid_ = nullptr;
    QLabel* lblIntro_ = nullptr;
    QPushButton* cmdShowAnswers_ = nullptr;
    std::vector<QWidget*> lineWidgets_; // everything Rebuild puts in the grid
    std::vector<EquationLine> equations_;
    std::vector<ValueLine> values_;
    std::vector<std::string> shownEquations_; // the program's, when the lines were made
    bool answersHidden_ = false;
};

} // namespace ampora::ui
