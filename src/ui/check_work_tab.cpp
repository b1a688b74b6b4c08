#include "ui/check_work_tab.h"

#include "equations/equation_check.h"
#include "tables/number_text.h"
#include "tables/workspace.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace ampora::ui {

namespace {

QString FromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string ToUtf8(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

// A long text wraps to the tab's width instead of widening the page past it.
void WrapToWidth(QLabel* label) {
    label->setWordWrap(true);
    label->setMinimumWidth(200);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

// The same green and red in a light and a dark palette.
const QColor kRight(0x2e, 0x8b, 0x3a);
const QColor kWrong(0xc6, 0x28, 0x28);

} // namespace

CheckWorkTab::CheckWorkTab(const Workspace& workspace, QWidget* parent)
    : QWidget(parent), workspace_(workspace) {
    setObjectName(QStringLiteral("pageCheckWork"));
    auto* column = new QVBoxLayout(this);
    column->setSpacing(10);
    lblIntro_ = new QLabel(this);
    lblIntro_->setObjectName(QStringLiteral("lblCheckIntro"));
    WrapToWidth(lblIntro_);
    lblIntro_->setText(QStringLiteral(
        "Write the KCL equation of each node or supernode with the names on the diagram and "
        "press Check; then type the voltage you found for each unknown.\n"
        "For example: (V1-V2)/10 + V4/30 = 0"));
    column->addWidget(lblIntro_);
    grid_ = new QGridLayout();
    grid_->setHorizontalSpacing(8);
    grid_->setVerticalSpacing(4);
    grid_->setColumnStretch(1, 1);
    column->addLayout(grid_);
    cmdShowAnswers_ = new QPushButton(QStringLiteral("Show the answers"), this);
    cmdShowAnswers_->setObjectName(QStringLiteral("cmdShowAnswers"));
    cmdShowAnswers_->setVisible(false);
    connect(cmdShowAnswers_, &QPushButton::clicked, this, [this] {
        SetAnswersHidden(false);
        emit answersEarned();
    });
    column->addWidget(cmdShowAnswers_, 0, Qt::AlignLeft);
    column->addStretch();
}

void CheckWorkTab::SetAnswersHidden(bool hidden) {
    answersHidden_ = hidden;
    cmdShowAnswers_->setVisible(hidden);
}

void CheckWorkTab::ClearLines() {
    for (QWidget* widget : lineWidgets_) {
        delete widget;
    }
    lineWidgets_.clear();
    equations_.clear();
    values_.clear();
}

void CheckWorkTab::Rebuild(const QFont& font) {
    setFont(font);
    const Workspace& ws = workspace_;
    const bool sameEquations = ws.Equations.FirstWritten == shownEquations_;
    std::vector<QString> typedEquations, typedValues;
    if (sameEquations) {
        for (const EquationLine& line : equations_) {
            typedEquations.push_back(line.field->text());
        }
        for (const ValueLine& line : values_) {
            typedValues.push_back(line.field->text());
        }
    }
    ClearLines();
    shownEquations_ = ws.Equations.FirstWritten;

    int row = 0;
    const auto add = [this](QWidget* widget) {
        lineWidgets_.push_back(widget);
        return widget;
    };
    const auto verdictLabel = [&](const QString& name) {
        auto* label = new QLabel(this);
        label->setObjectName(name);
        WrapToWidth(label);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setVisible(false);
        add(label);
        return label;
    };
    const auto checkButton = [&](const QString& name) {
        auto* button = new QPushButton(QStringLiteral("Check"), this);
        button->setObjectName(name);
        add(button);
        return button;
    };

    const int unknowns = ws.Equations.NumUnknowns;
    for (int v = 1; v <= unknowns; ++v) {
        auto* caption = new QLabel(FromUtf8(EquationCaption(ws, v)), this);
        caption->setObjectName(QStringLiteral("lblCheckEquation%1").arg(v));
        add(caption);
        auto* field = new QLineEdit(this);
        field->setObjectName(QStringLiteral("txtEquation%1").arg(v));
        field->setPlaceholderText(QStringLiteral("the equation of %1").arg(caption->text()));
        add(field);
        QPushButton* check = checkButton(QStringLiteral("cmdCheckEquation%1").arg(v));
        QLabel* verdict = verdictLabel(QStringLiteral("lblEquationVerdict%1").arg(v));
        grid_->addWidget(caption, row, 0);
        grid_->addWidget(field, row, 1, 1, 2);
        grid_->addWidget(check, row, 3);
        grid_->addWidget(verdict, row + 1, 1, 1, 3);
        row += 2;
        const int index = v - 1;
        connect(check, &QPushButton::clicked, this, [this, index] { CheckEquationAt(index); });
        connect(field, &QLineEdit::returnPressed, this, [this, index] { CheckEquationAt(index); });
        // A changed equation is judged afresh.
        connect(field, &QLineEdit::textEdited, this, [this, index] {
            equations_[static_cast<std::size_t>(index)].right = false;
            equations_[static_cast<std::size_t>(index)].verdict->setVisible(false);
        });
        equations_.push_back(EquationLine{field, verdict, false});
    }

    if (unknowns > 0) {
        grid_->setRowMinimumHeight(row++, 8);
        auto* heading = new QLabel(QStringLiteral("The values you found:"), this);
        heading->setObjectName(QStringLiteral("lblCheckValues"));
        add(heading);
        grid_->addWidget(heading, row++, 0, 1, 4);
    }
    for (int v = 1; v <= unknowns; ++v) {
        const std::string& name = ws.Equations.EqnVars[static_cast<std::size_t>(v - 1)].VarName;
        auto* caption = new QLabel(FromUtf8(name) + QStringLiteral(" ="), this);
        caption->setObjectName(QStringLiteral("lblCheckValue%1").arg(v));
        caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        add(caption);
        auto* field = new QLineEdit(this);
        field->setObjectName(QStringLiteral("txtValue%1").arg(v));
        add(field);
        auto* unit = new QLabel(QStringLiteral("V"), this);
        add(unit);
        QPushButton* check = checkButton(QStringLiteral("cmdCheckValue%1").arg(v));
        QLabel* verdict = verdictLabel(QStringLiteral("lblValueVerdict%1").arg(v));
        grid_->addWidget(caption, row, 0);
        grid_->addWidget(field, row, 1);
        grid_->addWidget(unit, row, 2);
        grid_->addWidget(check, row, 3);
        grid_->addWidget(verdict, row + 1, 1, 1, 3);
        row += 2;
        const int index = v - 1;
        connect(check, &QPushButton::clicked, this, [this, index] { CheckValueAt(index); });
        connect(field, &QLineEdit::returnPressed, this, [this, index] { CheckValueAt(index); });
        connect(field, &QLineEdit::textEdited, this,
                [this, index] { values_[static_cast<std::size_t>(index)].verdict->hide(); });
        values_.push_back(ValueLine{field, verdict});
    }

    // What was typed for the same equations is judged again, at the figures now chosen.
    for (std::size_t k = 0; k < typedEquations.size() && k < equations_.size(); ++k) {
        equations_[k].field->setText(typedEquations[k]);
        if (!typedEquations[k].trimmed().isEmpty()) {
            CheckEquationAt(static_cast<int>(k));
        }
    }
    for (std::size_t k = 0; k < typedValues.size() && k < values_.size(); ++k) {
        values_[k].field->setText(typedValues[k]);
        if (!typedValues[k].trimmed().isEmpty()) {
            CheckValueAt(static_cast<int>(k));
        }
    }
}

void CheckWorkTab::ShowVerdict(QLabel* label, bool right, const QString& text) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, right ? kRight : kWrong);
    label->setPalette(palette);
    label->setText(text);
    label->setVisible(true);
}

void CheckWorkTab::CheckEquationAt(int index) {
    EquationLine& line = equations_.at(static_cast<std::size_t>(index));
    const QString text = line.field->text();
    if (text.trimmed().isEmpty()) {
        line.right = false;
        ShowVerdict(line.verdict, false, QStringLiteral("Type the equation first."));
        return;
    }
    const EquationVerdict verdict = CheckEquation(workspace_, index + 1, ToUtf8(text));
    line.right = verdict.equivalent;
    if (!verdict.error.empty()) {
        ShowVerdict(line.verdict, false,
                    QStringLiteral("Cannot be read: ") + FromUtf8(verdict.error) + '.');
    } else if (verdict.equivalent) {
        ShowVerdict(line.verdict, true, QStringLiteral("Right"));
    } else {
        ShowVerdict(line.verdict, false,
                    QStringLiteral("Not right: ") + FromUtf8(verdict.hint) + '.');
    }
    const bool allRight = std::all_of(equations_.begin(), equations_.end(),
                                      [](const EquationLine& each) { return each.right; });
    if (allRight && answersHidden_) {
        SetAnswersHidden(false);
        emit answersEarned();
    }
}

void CheckWorkTab::CheckValueAt(int index) {
    ValueLine& line = values_.at(static_cast<std::size_t>(index));
    QString text = line.field->text().trimmed();
    if (text.endsWith(QLatin1Char('V'))) {
        text.chop(1); // the unit typed out of habit
        text = text.trimmed();
    }
    const std::optional<double> value = ParseDouble(ToUtf8(text));
    if (!value) {
        ShowVerdict(line.verdict, false,
                    text.isEmpty() ? QStringLiteral("Type the value first.")
                                   : QStringLiteral("Cannot be read: write a number such as "
                                                    "4.58 or 1.2E-3."));
        return;
    }
    const Workspace& ws = workspace_;
    const std::string& name = ws.Equations.EqnVars.at(static_cast<std::size_t>(index)).VarName;
    const AnswerVerdict verdict = CheckAnswer(ws, name, *value, ws.Preferences.SigFigs);
    if (verdict.right) {
        ShowVerdict(line.verdict, true, QStringLiteral("Right"));
    } else {
        ShowVerdict(line.verdict, false,
                    QStringLiteral("Not right: ") + FromUtf8(verdict.hint) + '.');
    }
}

} // namespace ampora::ui
