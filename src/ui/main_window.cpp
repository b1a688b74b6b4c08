#include "ui/main_window.h"

#include "document/circuit_edit.h"
#include "editor/editing_tools.h"
#include "settings/recent_files.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/edit_commands.h"
#include "ui/equations_window.h"
#include "ui/qt_file_dialogs.h"
#include "ui/qt_prompts.h"
#include "ui/qt_settings_store.h"
#include "ui/tool_hints.h"
#include "ui/tool_icons.h"
#include "workflow/step_transitions.h"

#include <QAction>
#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>

namespace ampora::ui {

namespace {

// The step panels stand at the right edge of the canvas, over the drawing.
constexpr int kStepPanelWidth = 150;

} // namespace

MainWindow::MainWindow(Workspace& workspace, WindowPorts ports, QWidget* parent)
    : QMainWindow(parent), workspace_(workspace) {
    setObjectName(QStringLiteral("frmMain"));
    canvas_ = new Canvas(workspace_, editor_, this);
    setCentralWidget(canvas_);
    if (ports.prompts == nullptr) {
        ownPrompts_ = std::make_unique<QtPrompts>(this, [this](float left, float top) {
            return canvas_->mapToGlobal(canvas_->ToWidget(QPointF(left, top))).toPoint();
        });
    }
    if (ports.dialogs == nullptr) {
        ownDialogs_ = std::make_unique<QtFileDialogs>(this);
    }
    if (ports.store == nullptr) {
        ownStore_ = std::make_unique<QtSettingsStore>();
    }
    prompts_ = ports.prompts != nullptr ? ports.prompts : ownPrompts_.get();
    dialogs_ = ports.dialogs != nullptr ? ports.dialogs : ownDialogs_.get();
    store_ = ports.store != nullptr ? ports.store : ownStore_.get();
    canvas_->SetPrompts(prompts_);
    edits_ = new EditCommands(workspace_, editor_, *canvas_, *prompts_, this);

    // Panel 1 carries the step instructions and the power totals, panel 2 the hints. Each
    // keeps its own place: panel 1 is as wide as its text, and the hint takes the rest,
    // cut off at its own edge when the window is too narrow for it (its tool tip holds
    // it whole), never running under panel 1.
    stepStatus_ = new QLabel(this);
    stepStatus_->setObjectName(QStringLiteral("StatusPanel1"));
    statusBar()->addWidget(stepStatus_);
    hint_ = new QLabel(this);
    hint_->setObjectName(QStringLiteral("StatusBar1"));
    hint_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(hint_, 1);
    statusBar()->setSizeGripEnabled(true);

    BuildToolbar();
    BuildMenus();
    BuildStepPanels();
    BuildInstructions();
    canvas_->installEventFilter(this);
    connect(canvas_, &Canvas::Edited, this, &MainWindow::SyncToolbar);
    connect(canvas_, &Canvas::Edited, this, [this] { edits_->RecordTool(editor_.CurrentTool); });
    connect(edits_, &EditCommands::DrawingRestored, this, [this] {
        SyncToolbar();
        canvas_->update();
    });
    connect(canvas_, &Canvas::NodeLabelClicked, this, &MainWindow::NodeLabelClicked);
    frmEquations_ = new EquationsWindow(workspace_, this);
    BuildAccess();
    connect(frmEquations_, &EquationsWindow::answersShown, this, [this] { HideAnswers(false); });

    // Start-up: an untitled empty circuit in step 1, no tool, nothing to undo.
    workspace_.Step = kStepEdit;
    workspace_.ViewMode = kViewValues;
    ResetEditor(editor_, false);
    ClearUndoMemory(workspace_.Circuit);
    LoadRegSettings();
    FillRecentMenu();
    SetHint(QString::fromLatin1(kStartHint));
    frInstruct1_->setVisible(workspace_.Preferences.ShowInstructions);
    chkInstructions_->setChecked(!workspace_.Preferences.ShowInstructions);
    SyncToolbar();
    EnterStepPanel();
    UpdateCaption();
    edits_->Restart();
}

MainWindow::~MainWindow() = default;

void MainWindow::UpdateCaption() {
    const QString name = workspace_.CurrentFileName.empty()
                             ? QStringLiteral("[untitled]")
                             : QString::fromStdString(workspace_.CurrentFileName);
    setWindowTitle(QStringLiteral("DC Ampora - ") + name);
}

QString MainWindow::StatusText() const {
    return hint_->text();
}

QString MainWindow::StepStatusText() const {
    return stepStatus_->text();
}

void MainWindow::SetStepStatus(const QString& text) {
    stepStatus_->setText(text);
    // The instructions and the power totals are read whole; the hint panel gives way.
    stepStatus_->setMinimumWidth(stepStatus_->fontMetrics().horizontalAdvance(text) + 8);
}

void MainWindow::SetHint(const QString& text) {
    hint_->setText(text);
    hint_->setToolTip(text.trimmed());
}

// ---- toolbar, panels, instructions ----

void MainWindow::BuildToolbar() {
    // The toolbar lies over the top of the canvas, as the drawing's coordinates expect.
    toolbar_ = new QToolBar(canvas_);
    toolbar_->setObjectName(QStringLiteral("Toolbar"));
    toolbar_->setIconSize(QSize(24, 24));
    toolbar_->setMovable(false);
    toolbar_->setAutoFillBackground(true);
    for (int button = 1; button <= 8; ++button) {
        QAction* action = toolbar_->addAction(ToolIcon(button), QString());
        action->setObjectName(QStringLiteral("Tool%1").arg(button));
        action->setToolTip(QString::fromLatin1(kToolButtons[button].tip));
        action->setStatusTip(QString::fromLatin1(kToolButtons[button].hint));
        action->setCheckable(button != kUndoEraseButton);
        connect(action, &QAction::triggered, this, [this, button] { ChooseToolbarButton(button); });
        toolActions_[static_cast<std::size_t>(button)] = action;
    }
}

void MainWindow::LayOutCanvasChildren() {
    const int top = toolbar_->sizeHint().height();
    toolbar_->setGeometry(0, 0, canvas_->width(), top);
    stepPanels_->setGeometry(canvas_->width() - kStepPanelWidth, top, kStepPanelWidth,
                             canvas_->height() - top);
    canvas_->SetCoveredAreas(top, kStepPanelWidth);
    const int free = canvas_->width() - kStepPanelWidth;
    const int width = std::min(380, std::max(200, free - 40));
    frInstruct1_->setFixedWidth(width);
    frInstruct1_->adjustSize();
    frInstruct1_->move(std::max(8, (free - width) / 2),
                       top + std::max(8, (canvas_->height() - top - frInstruct1_->height()) / 2));
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas_ && (event->type() == QEvent::Resize || event->type() == QEvent::Show)) {
        LayOutCanvasChildren();
    }
    return QMainWindow::eventFilter(watched, event);
}

bool MainWindow::event(QEvent* event) {
    // A toolbar button's hint stays in the status bar after the pointer leaves it.
    if (event->type() == QEvent::StatusTip) {
        const QString tip = static_cast<QStatusTipEvent*>(event)->tip();
        if (!tip.isEmpty()) {
            SetHint(tip);
        }
        return true;
    }
    return QMainWindow::event(event);
}

void MainWindow::ChooseToolbarButton(int button) {
    if (button == kUndoEraseButton) {
        if (UndoErase(workspace_.Circuit, editor_)) {
            edits_->Record("Undo Erase");
            canvas_->update();
        }
    } else {
        SelectTool(editor_, button);
        canvas_->unsetCursor();
        if (button == kWireTool) {
            canvas_->setCursor(Qt::CrossCursor);
        }
    }
    SyncToolbar();
}

void MainWindow::SyncToolbar() {
    for (int button = 1; button <= 7; ++button) {
        toolActions_[static_cast<std::size_t>(button)]->setChecked(editor_.CurrentTool == button);
    }
    toolActions_[kUndoEraseButton]->setEnabled(editor_.UndoAvailable == 1);
}
} // namespace ampora::ui
