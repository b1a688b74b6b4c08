#include "ui/row_operations_tab.h"

#include "report/equation_drawing.h"
#include "report/markup_state.h"
#include "report/style_codes.h"
#include "tables/workspace.h"
#include "ui/painter_surface.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace ampora::ui {

namespace {

constexpr float kMargin = 10;
// Wide enough that no text measured on it wraps.
constexpr int kDraftWidth = 4000;
constexpr float kCellPadX = 10;
constexpr float kCellPadY = 6;
constexpr std::uint32_t kPivotColour = 0x0050C8;
const QColor kChangedShade(255, 243, 176);

// Sizes of what DrawEquation sets, found by setting it where nobody sees it.
class Measure {
  public:
    explicit Measure(MarkupState& state)
        : image_(kDraftWidth, 1, QImage::Format_RGB32), surface_(image_), state_(state) {
        SetNormalStyle(surface_, state_);
    }
    EquationExtent operator()(const std::string& text) {
        surface_.SetCurrentX(0);
        surface_.SetCurrentY(0);
        return DrawEquation(surface_, state_, text);
    }
    float TextWidth(const std::string& text) {
        SetNormalStyle(surface_, state_);
        return surface_.TextWidth(text);
    }

  private:
    QImage image_;
    PainterSurface surface_;
    MarkupState& state_;
};

struct Layout {
    std::vector<float> columnWidth; // 0: the row names
    std::vector<float> rowHeight;   // 0: the unknowns' names
    float wordsHeight = 0;
    float wordsWidth = 0;
    std::vector<EquationExtent> words; // before, number, after
    std::vector<EquationExtent> solutions;

    float ColumnLeft(std::size_t column, float left) const {
        for (std::size_t k = 0; k < column; ++k) {
            left += columnWidth[k];
        }
        return left;
    }
    float RowTop(std::size_t row, float top) const {
        for (std::size_t k = 0; k < row; ++k) {
            top += rowHeight[k];
        }
        return top;
    }
};

std::vector<std::string> Headers(const Workspace& ws) {
    std::vector<std::string> headers;
    for (const EqnVar& var : ws.Equations.EqnVars) {
        headers.push_back(var.VarName);
    }
    return headers;
}

} // namespace

QImage RowOperationPicture(const Workspace& ws, const ShownSteps& shown, int step, qreal scale) {
    if (step < 0 || step >= static_cast<int>(shown.steps.size())) {
        return QImage();
    }
    const ShownStep& current = shown.steps[static_cast<std::size_t>(step)];
    const bool last = step + 1 == static_cast<int>(shown.steps.size());
    const int n = ws.Equations.NumUnknowns;
    const std::vector<std::string> headers = Headers(ws);
    MarkupState state;
    state.FontIndex = static_cast<std::int16_t>(std::clamp<int>(ws.Preferences.FontIndex, 1, 4));
    const float line = CurrentFontSet(state).LineStep;

    Layout layout;
    Measure measure(state);
    layout.columnWidth.assign(static_cast<std::size_t>(n + 2), 0);
    layout.rowHeight.assign(static_cast<std::size_t>(n + 1), 0);
    const auto fit = [&layout](std::size_t row, std::size_t column, EquationExtent extent) {
        layout.columnWidth[column] =
            std::max(layout.columnWidth[column], extent.Width + 2 * kCellPadX);
        layout.rowHeight[row] = std::max(layout.rowHeight[row], extent.Height + 2 * kCellPadY);
    };
    for (int column = 1; column <= n + 1; ++column) {
        const auto c = static_cast<std::size_t>(column);
        fit(0, c,
            column <= n ? measure(headers[c - 1])
                        : EquationExtent{measure.TextWidth("Constant"), line * 0.8f});
    }
    for (int row = 1; row <= n; ++row) {
        fit(static_cast<std::size_t>(row), 0,
            {measure.TextWidth("R" + std::to_string(row)), line * 0.8f});
        for (int column = 1; column <= n + 1; ++column) {
            const std::string& cell =
                current.cells[static_cast<std::size_t>((row - 1) * (n + 1) + column - 1)];
            fit(static_cast<std::size_t>(row), static_cast<std::size_t>(column), measure(cell));
        }
    }
    // The words as plain text, the number set as the equations set it.
    for (const std::string* piece :
         {&current.words.before, &current.words.number, &current.words.after}) {
        const bool number = piece == &current.words.number;
        const EquationExtent extent = piece->empty() ? EquationExtent{}
                                      : number
                                          ? measure(*piece)
                                          : EquationExtent{measure.TextWidth(*piece), line * 0.8f};
        layout.words.push_back(extent);
        layout.wordsWidth += extent.Width;
        layout.wordsHeight = std::max(layout.wordsHeight, extent.Height);
    }
    float solutionsHeight = 0;
    float solutionsWidth = 0;
    if (last && !shown.solutions.empty()) {
        solutionsHeight = line * 1.5f;
        solutionsWidth = measure.TextWidth("Solutions:");
        for (const std::string& solution : shown.solutions) {
            layout.solutions.push_back(measure(solution));
            solutionsHeight += layout.solutions.back().Height + line * 0.4f;
            solutionsWidth = std::max(solutionsWidth, layout.solutions.back().Width);
        }
    }

    const float matrixLeft = kMargin;
    const float matrixTop = kMargin + layout.wordsHeight + line;
    const float matrixWidth = layout.ColumnLeft(layout.columnWidth.size(), 0) + 8;
    const float matrixBottom = layout.RowTop(layout.rowHeight.size(), matrixTop);
    const float width = std::max({layout.wordsWidth, matrixWidth, solutionsWidth}) + 2 * kMargin;
    const float height =
        matrixBottom + (solutionsHeight > 0 ? line + solutionsHeight : 0) + kMargin;

    QImage image(static_cast<int>(std::ceil(width * scale)),
                 static_cast<int>(std::ceil(height * scale)), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    const float cellsLeft = layout.ColumnLeft(1, matrixLeft);
    const float cellsRight = layout.ColumnLeft(static_cast<std::size_t>(n + 2), matrixLeft);
    {
        QPainter shade(&image);
        for (const int row : {current.changedRow, current.otherChangedRow}) {
            if (row >= 1 && row <= n) {
                const float top = layout.RowTop(static_cast<std::size_t>(row), matrixTop);
                shade.fillRect(QRectF(cellsLeft, top, cellsRight - cellsLeft,
                                      layout.rowHeight[static_cast<std::size_t>(row)]),
                               kChangedShade);
            }
        }
    }
    PainterSurface surface(image);
    SetNormalStyle(surface, state);
    const auto centred = [&](const std::string& text, EquationExtent extent, float left, float top,
                             float cellWidth, float cellHeight) {
        surface.SetCurrentX(left + (cellWidth - extent.Width) / 2);
        surface.SetCurrentY(top + (cellHeight - extent.Height) / 2);
        DrawEquation(surface, state, text);
    };
    const auto plain = [&](const std::string& text, float left, float top, float cellWidth,
                           float cellHeight) {
        SetNormalStyle(surface, state);
        surface.SetCurrentX(left + (cellWidth - surface.TextWidth(text)) / 2);
        surface.SetCurrentY(top + (cellHeight - line * 0.8f) / 2);
        surface.Print(text);
    };

    // The words, their pieces centred on one line.
    float x = kMargin;
    const std::string* pieces[] = {&current.words.before, &current.words.number,
                                   &current.words.after};
    for (std::size_t k = 0; k < 3; ++k) {
        if (k == 1 && !pieces[k]->empty()) {
            centred(*pieces[k], layout.words[k], x, kMargin, layout.words[k].Width,
                    layout.wordsHeight);
        } else if (!pieces[k]->empty()) {
            plain(*pieces[k], x, kMargin, layout.words[k].Width, layout.wordsHeight);
        }
        x += layout.words[k].Width;
    }

    // Names over the columns and beside the rows, then the cells.
    for (int column = 1; column <= n + 1; ++column) {
        const auto c = static_cast<std::size_t>(column);
        const float left = layout.ColumnLeft(c, matrixLeft);
        if (column <= n) {
            centred(headers[c - 1], measure(headers[c - 1]), left, matrixTop, layout.columnWidth[c],
                    layout.rowHeight[0]);
        } else {
            plain("Constant", left, matrixTop, layout.columnWidth[c], layout.rowHeight[0]);
        }
    }
    for (int row = 1; row <= n; ++row) {
        const auto r = static_cast<std::size_t>(row);
        const float top = layout.RowTop(r, matrixTop);
        plain("R" + std::to_string(row), matrixLeft, top, layout.columnWidth[0],
              layout.rowHeight[r]);
        for (int column = 1; column <= n + 1; ++column) {
            const auto c = static_cast<std::size_t>(column);
            const std::string& cell =
                current.cells[(r - 1) * static_cast<std::size_t>(n + 1) + c - 1];
            centred(cell, measure(cell), layout.ColumnLeft(c, matrixLeft), top,
                    layout.columnWidth[c], layout.rowHeight[r]);
        }
    }

    // Brackets round the cells, a bar before the constants, a box round the pivot.
    const float cellsTop = layout.RowTop(1, matrixTop);
    const float tick = 5;
    surface.SetForeColor(0);
    for (const float edge : {cellsLeft, cellsRight}) {
        const float inward = edge == cellsLeft ? tick : -tick;
        surface.DrawLine(edge, cellsTop, edge, matrixBottom);
        surface.DrawLine(edge, cellsTop, edge + inward, cellsTop);
        surface.DrawLine(edge, matrixBottom, edge + inward, matrixBottom);
    }
    const float bar = layout.ColumnLeft(static_cast<std::size_t>(n + 1), matrixLeft);
    surface.DrawLine(bar, cellsTop + 3, bar, matrixBottom - 3);
    if (current.pivotRow >= 1 && current.pivotRow <= n && current.pivotColumn >= 1 &&
        current.pivotColumn <= n) {
        const auto r = static_cast<std::size_t>(current.pivotRow);
        const auto c = static_cast<std::size_t>(current.pivotColumn);
        const float left = layout.ColumnLeft(c, matrixLeft) + 2;
        const float top = layout.RowTop(r, matrixTop) + 2;
        const float right = left + layout.columnWidth[c] - 4;
        const float bottom = top + layout.rowHeight[r] - 4;
        surface.SetForeColor(kPivotColour);
        for (int thick = 0; thick < 2; ++thick) {
            const float d = static_cast<float>(thick);
            surface.DrawLine(left + d, top + d, right - d, top + d);
            surface.DrawLine(left + d, bottom - d, right - d, bottom - d);
            surface.DrawLine(left + d, top + d, left + d, bottom - d);
            surface.DrawLine(right - d, top + d, right - d, bottom - d);
        }
        surface.SetForeColor(0);
    }

    if (!layout.solutions.empty()) {
        float top = matrixBottom + line;
        SetNormalStyle(surface, state);
        surface.SetCurrentX(kMargin);
        surface.SetCurrentY(top);
        surface.Print("Solutions:");
        top += line * 1.5f;
        for (std::size_t k = 0; k < shown.solutions.size(); ++k) {
            surface.SetCurrentX(kMargin);
            surface.SetCurrentY(top);
            DrawEquation(surface, state, shown.solutions[k]);
            top += layout.solutions[k].Height + line * 0.4f;
        }
    }
    return image;
}

RowOperationsTab::RowOperationsTab(const Workspace& workspace, QWidget* parent)
    : QWidget(parent), workspace_(workspace) {
    setObjectName(QStringLiteral("tabRowOperations"));
    auto* column = new QVBoxLayout(this);
    auto* buttons = new QHBoxLayout();
    const auto button = [this, buttons](const char* name, const QString& text) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        buttons->addWidget(b);
        return b;
    };
    cmdFirst_ = button("cmdFirst", QStringLiteral("First"));
    cmdPrevious_ = button("cmdPrevious", QStringLiteral("Previous"));
    cmdNext_ = button("cmdNext", QStringLiteral("Next"));
    cmdLast_ = button("cmdLast", QStringLiteral("Last"));
    lblStep_ = new QLabel(this);
    lblStep_->setObjectName(QStringLiteral("lblStep"));
    buttons->addSpacing(12);
    buttons->addWidget(lblStep_);
    buttons->addStretch();
    chkFractions_ = new QCheckBox(QStringLiteral("Show fractions"), this);
    chkFractions_->setObjectName(QStringLiteral("chkFractions"));
    buttons->addWidget(chkFractions_);
    column->addLayout(buttons);
    lblNote_ = new QLabel(this);
    lblNote_->setObjectName(QStringLiteral("lblFractionsNote"));
    lblNote_->setWordWrap(true);
    lblNote_->hide();
    column->addWidget(lblNote_);
    scroll_ = new QScrollArea(this);
    scroll_->setObjectName(QStringLiteral("scrollRowOperations"));
    scroll_->setWidgetResizable(true);
    scroll_->setBackgroundRole(QPalette::Base);
    picStep_ = new QLabel(scroll_);
    picStep_->setObjectName(QStringLiteral("picRowOperation"));
    picStep_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    picStep_->setAutoFillBackground(true);
    picStep_->setBackgroundRole(QPalette::Base);
    scroll_->setWidget(picStep_);
    column->addWidget(scroll_, 1);

    connect(cmdFirst_, &QPushButton::clicked, this, [this] { ShowStep(0); });
    connect(cmdPrevious_, &QPushButton::clicked, this, [this] { ShowStep(step_ - 1); });
    connect(cmdNext_, &QPushButton::clicked, this, [this] { ShowStep(step_ + 1); });
    connect(cmdLast_, &QPushButton::clicked, this, [this] { ShowStep(StepCount() - 1); });
    connect(chkFractions_, &QCheckBox::toggled, this, &RowOperationsTab::SetFractions);
    const auto key = [this](QKeySequence sequence, auto action) {
        auto* shortcut = new QShortcut(sequence, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    key(QKeySequence(Qt::Key_Home), [this] { ShowStep(0); });
    key(QKeySequence(Qt::Key_End), [this] { ShowStep(StepCount() - 1); });
    for (const Qt::Key back : {Qt::Key_Left, Qt::Key_PageUp}) {
        key(QKeySequence(back), [this] { ShowStep(step_ - 1); });
    }
    for (const Qt::Key forward : {Qt::Key_Right, Qt::Key_PageDown}) {
        key(QKeySequence(forward), [this] { ShowStep(step_ + 1); });
    }
    setFocusPolicy(Qt::StrongFocus);
}

void RowOperationsTab::Rebuild(qreal density) {
    density_ = density;
    Refill();
}

void RowOperationsTab::SetFractions(bool on) {
    if (chkFractions_->isChecked() != on) {
        chkFractions_->setChecked(on); // comes back here through the signal
        return;
    }
    Refill();
}

void RowOperationsTab::Refill() {
    const bool fractions = chkFractions_->isChecked();
    shown_ = ShowRowOperations(workspace_, fractions, workspace_.Preferences.SigFigs);
    lblNote_->setText(QStringLiteral(
        "These numbers cannot be followed exactly through the same steps, so decimals are shown."));
    lblNote_->setVisible(fractions && !shown_.fractions && !shown_.steps.empty());
    ShowStep(std::clamp(step_, 0, std::max(StepCount() - 1, 0)));
}

void RowOperationsTab::ShowStep(int step) {
    const int count = StepCount();
    step_ = std::clamp(step, 0, std::max(count - 1, 0));
    picture_ = RowOperationPicture(workspace_, shown_, step_, density_);
    picStep_->setPixmap(QPixmap::fromImage(picture_));
    if (count == 0) {
        lblStep_->setText(QStringLiteral("No unknowns, no steps"));
    } else if (step_ == 0) {
        lblStep_->setText(QStringLiteral("Before the first of %1 steps").arg(count - 1));
    } else {
        lblStep_->setText(QStringLiteral("Step %1 of %2").arg(step_).arg(count - 1));
    }
    cmdFirst_->setEnabled(step_ > 0);
    cmdPrevious_->setEnabled(step_ > 0);
    cmdNext_->setEnabled(step_ + 1 < count);
    cmdLast_->setEnabled(step_ + 1 < count);
}

} // namespace ampora::ui
