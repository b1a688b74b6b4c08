#include "ui/equations_window.h"

#include "analysis/format_number.h"
#include "equations/counting_text.h"
#include "report/font_sets.h"
#include "tables/workspace.h"
#include "ui/check_work_tab.h"
#include "ui/equation_pictures.h"
#include "ui/matrix_file.h"
#include "ui/row_operations_tab.h"

#include <QHeaderView>
#include <QLabel>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace ampora::ui {

namespace {

QString FromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QTableWidget* Grid(const QString& name, QWidget* parent) {
    auto* grid = new QTableWidget(parent);
    grid->setObjectName(name);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionMode(QAbstractItemView::NoSelection);
    grid->setFocusPolicy(Qt::NoFocus);
    grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    return grid;
}

// The grid as tall and wide as its cells, so the tab scrolls as one page.
void FitToCells(QTableWidget* grid) {
    grid->resizeColumnsToContents();
    grid->resizeRowsToContents();
    int width = grid->verticalHeader()->width() + 2 * grid->frameWidth();
    for (int c = 0; c < grid->columnCount(); ++c) {
        width += grid->columnWidth(c);
    }
    int height = grid->horizontalHeader()->height() + 2 * grid->frameWidth();
    for (int r = 0; r < grid->rowCount(); ++r) {
        height += grid->rowHeight(r);
    }
    grid->setFixedSize(width, height);
}

QTableWidgetItem* Cell(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

// The voltage of equation variable `index` (from 0): that of its node, the anchor's for a
// supernode.
double VariableVoltage(const Workspace& ws, std::size_t index) {
    const int position = ws.Equations.EqnVars[index].Node;
    return ws.Circuit.NodeLabels[ws.Naming.NodeOrder[position]].Voltage;
}

} // namespace

EquationsWindow::EquationsWindow(const Workspace& workspace, QWidget* parent)
    : QWidget(parent, Qt::Window), workspace_(workspace) {
    setObjectName(QStringLiteral("frmEquations"));
    setWindowTitle(QStringLiteral("Equations"));
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("tabEquations"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(tabs_);

    txtCounting_ = new QPlainTextEdit(tabs_);
    txtCounting_->setObjectName(QStringLiteral("txtCounting"));
    txtCounting_->setReadOnly(true);
    txtCounting_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    tabs_->addTab(txtCounting_, QStringLiteral("Unknowns and equations"));

    auto* scroll = new QScrollArea(tabs_);
    scroll_ = scroll;
    scroll->setObjectName(QStringLiteral("scrollEquations"));
    scroll->setWidgetResizable(true);
    auto* page = new QWidget(scroll);
    page_ = page;
    page->setObjectName(QStringLiteral("pageEquations"));
    page->setAutoFillBackground(true);
    page->setBackgroundRole(QPalette::Base);
    auto* column = new QVBoxLayout(page);
    column->setSpacing(8);
    const auto caption = [this, page, column](int index) {
        auto* label = new QLabel(page);
        label->setObjectName(QStringLiteral("lblEqnText%1").arg(index));
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        // A caption wraps to the window instead of widening the page.
        label->setMinimumWidth(200);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        column->addWidget(label);
        captions_[static_cast<std::size_t>(index)] = label;
    };
    const auto picture = [page, column](const QString& name) {
        auto* label = new QLabel(page);
        label->setObjectName(name);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        column->addWidget(label);
        return label;
    };
    caption(1);
    picEquations1_ = picture(QStringLiteral("picEquations1"));
    caption(3);
    picEquations2_ = picture(QStringLiteral("picEquations2"));
    caption(4);
    grdMatrix_ = Grid(QStringLiteral("grdMatrix"), page);
    column->addWidget(grdMatrix_);
    caption(5);
    grdRREF_ = Grid(QStringLiteral("grdRREF"), page);
    column->addWidget(grdRREF_);
    caption(6);
    grdSolutions_ = Grid(QStringLiteral("grdSolutions"), page);
    column->addWidget(grdSolutions_);
    caption(7);
    lblBatteryCurrents_ = new QLabel(page);
    lblBatteryCurrents_->setObjectName(QStringLiteral("lblBatteryCurrents"));
    lblBatteryCurrents_->setWordWrap(true);
    lblBatteryCurrents_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(lblBatteryCurrents_);
    column->addStretch();
    scroll->setWidget(page);
    tabs_->addTab(scroll, QStringLiteral("Equations and solutions"));
    rowOperations_ = new RowOperationsTab(workspace_, tabs_);
    tabs_->addTab(rowOperations_, QStringLiteral("Row operations"));

    checkScroll_ = new QScrollArea(tabs_);
    checkScroll_->setObjectName(QStringLiteral("scrollCheckWork"));
    checkScroll_->setWidgetResizable(true);
    checkWork_ = new CheckWorkTab(workspace_, checkScroll_);
    checkScroll_->setWidget(checkWork_);
    tabs_->addTab(checkScroll_, QStringLiteral("Check my work"));
    connect(checkWork_, &CheckWorkTab::answersEarned, this, [this] {
        SetAnswersHidden(false);
        emit answersShown();
    });
}

void EquationsWindow::SetAnswersHidden(bool hidden) {
    answersHidden_ = hidden;
    checkWork_->SetAnswersHidden(hidden);
    const int equationsTab = tabs_->indexOf(scroll_);
    tabs_->setTabVisible(equationsTab, !hidden);
    if (hidden) {
        tabs_->setCurrentWidget(checkScroll_);
    }
}

QLabel* EquationsWindow::Caption(int index) const {
    return captions_[static_cast<std::size_t>(index)];
}

QSize EquationsWindow::PageSize() const {
    return page_->layout()->sizeHint();
}

void EquationsWindow::FitToContents() {
    const QScreen* screen = this->screen();
    QWidget* current = tabs_->currentWidget();
    if (screen == nullptr || current == nullptr) {
        return;
    }
    // Around the page: the window's and the tab's frames (what the visible tab is short of
    // the window), the scroll area's frame and a scroll bar of each kind.
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, scroll_);
    const QSize around = size() - current->size() +
                         QSize(2 * scroll_->frameWidth() + scrollBar, 2 * scroll_->frameWidth());
    const QSize wanted = PageSize() + around;
    const QRect available = screen->availableGeometry();
    const int width = std::max(this->width(), std::min(wanted.width(), available.width()));
    const int height = std::max(this->height(), std::min(wanted.height(), available.height() / 2));
    if (width == this->width() && height == this->height()) {
        return;
    }
    resize(width, height);
    // A window made larger is kept whole on the screen.
    const QRect frame = frameGeometry();
    const QSize frameExtra = frame.size() - size();
    const int left =
        std::clamp(frame.left(), available.left(),
                   std::max(available.left(), available.right() + 1 - width - frameExtra.width()));
    const int top = std::clamp(
        frame.top(), available.top(),
        std::max(available.top(), available.bottom() + 1 - height - frameExtra.height()));
    move(left, top);
}

void EquationsWindow::ScrollToTop() {
    txtCounting_->verticalScrollBar()->setValue(0);
    scroll_->verticalScrollBar()->setValue(0);
    scroll_->horizontalScrollBar()->setValue(0);
    rowOperations_->ShowStep(0);
}

QImage EquationsWindow::Picture(int which) const {
    return which == 1 ? picture1_ : picture2_;
}

void EquationsWindow::ShowPicture(QLabel* label, const QImage& image) {
    label->setPixmap(QPixmap::fromImage(image));
    label->setVisible(!image.isNull());
}

void EquationsWindow::Rebuild() {
    const Workspace& ws = workspace_;
    const int sigFigs = ws.Preferences.SigFigs;
    const FontSet set = InitFontSets()[std::clamp<int>(ws.Preferences.FontIndex, 1, 4)];
    QFont font(QString::fromStdString(set.FontName));
    font.setPointSizeF(set.NormalSize);

    QString counting = FromUtf8(ws.Equations.CountingText);
    counting.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    txtCounting_->setFont(font);
    txtCounting_->setPlainText(counting);

    const int unknowns = ws.Equations.NumUnknowns;
    const std::array<std::string, 7> texts = ChooseEqnText(ws, sigFigs);
    for (int index = 1; index <= 7; ++index) {
        if (index == 2) {
            continue;
        }
        QLabel* label = Caption(index);
        label->setFont(font);
        label->setText(FromUtf8(texts[static_cast<std::size_t>(index - 1)]));
        label->setVisible(!label->text().isEmpty());
    }

    // Drawn at the screen's own pixel density, so that they stay sharp on a scaled screen.
    const qreal density = devicePixelRatioF();
    picture1_ = unknowns > 0 ? EquationPicture(ws, 1, density) : QImage();
    picture2_ = unknowns > 0 ? EquationPicture(ws, 2, density) : QImage();
    ShowPicture(picEquations1_, picture1_);
    ShowPicture(picEquations2_, picture2_);
    // A screen reader reads the equations the pictures show as their text.
    const auto spoken = [](const std::vector<std::string>& equations) {
        QStringList lines;
        for (const std::string& equation : equations) {
            lines << FromUtf8(equation);
        }
        return lines.join(QStringLiteral("; "));
    };
    picEquations1_->setAccessibleName(spoken(ws.Equations.FirstWritten));
    picEquations2_->setAccessibleName(spoken(ws.Equations.Collected));

    const bool grids = unknowns > 1;
    grdMatrix_->setVisible(grids);
    grdRREF_->setVisible(grids);
    grdSolutions_->setVisible(grids);
    if (grids) {
        FillGrid(grdMatrix_, false);
        FillGrid(grdRREF_, true);
        FillSolutions();
    }

    QStringList currents;
    for (int b = 1; b <= ws.Topology.NumBranches; ++b) {
        const Branch& chain = ws.Topology.Branches[b];
        if (chain.CurrentName.empty() || chain.CurrentName.front() != 'I' ||
            chain.Current == kUnknownCurrent) {
            continue;
        }
        currents << QStringLiteral("%1 = %2 A, from node %3 to node %4")
                        .arg(FromUtf8(chain.CurrentName),
                             FromUtf8(FormatNumber(chain.Current, sigFigs)),
                             FromUtf8(ws.Circuit.NodeLabels[chain.StartNode].Name),
                             FromUtf8(ws.Circuit.NodeLabels[chain.EndNode].Name));
    }
    lblBatteryCurrents_->setFont(font);
    lblBatteryCurrents_->setText(
        currents.isEmpty()
            ? QString()
            : QStringLiteral("The currents through the batteries that join the supernodes:\n") +
                  currents.join(QLatin1Char('\n')));
    lblBatteryCurrents_->setVisible(!currents.isEmpty());
    rowOperations_->Rebuild(density);
    UpdateMatrixFile(ws);

    checkWork_->Rebuild(font);
}

void EquationsWindow::FillGrid(QTableWidget* grid, bool reduced) {
    const Workspace& ws = workspace_;
    const int n = ws.Equations.NumUnknowns;
    const AugmentedMatrix& matrix = reduced ? ws.Equations.Reduced : ws.Equations.Augmented;
    grid->clear();
    grid->setRowCount(n);
    grid->setColumnCount(n + 1);
    QStringList headers;
    for (int c = 0; c < n; ++c) {
        headers << FromUtf8(ws.Equations.EqnVars[static_cast<std::size_t>(c)].VarName);
    }
    headers << QStringLiteral("Constant");
    grid->setHorizontalHeaderLabels(headers);
    for (int r = 1; r <= n; ++r) {
        for (int c = 1; c <= n + 1; ++c) {
            grid->setItem(r - 1, c - 1,
                          Cell(FromUtf8(FormatNumber(matrix(r, c), ws.Preferences.SigFigs))));
        }
    }
    FitToCells(grid);
}

void EquationsWindow::FillSolutions() {
    const Workspace& ws = workspace_;
    const int n = ws.Equations.NumUnknowns;
    grdSolutions_->clear();
    grdSolutions_->setRowCount(n);
    grdSolutions_->setColumnCount(2);
    grdSolutions_->setHorizontalHeaderLabels({QStringLiteral("Unknown"), QStringLiteral("Volts")});
    for (int r = 0; r < n; ++r) {
        const auto index = static_cast<std::size_t>(r);
        auto* name = new QTableWidgetItem(FromUtf8(ws.Equations.EqnVars[index].VarName));
        grdSolutions_->setItem(r, 0, name);
        grdSolutions_->setItem(
            r, 1, Cell(FromUtf8(FormatNumber(VariableVoltage(ws, index), ws.Preferences.SigFigs))));
    }
    FitToCells(grdSolutions_);
}

} // namespace ampora::ui
