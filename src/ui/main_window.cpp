#include "ui/main_window.h"

#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "analysis/step_transitions.h"
#include "document/circuit_edit.h"
#include "document/document_commands.h"
#include "document/workspace.h"
#include "editor/editing_tools.h"
#include "equations/counting_text.h"
#include "equations/matrix_export.h"
#include "settings/recent_files.h"
#include "ui/about_box.h"
#include "ui/canvas.h"
#include "ui/drawing_warnings_note.h"
#include "ui/equations_window.h"
#include "ui/help_window.h"
#include "ui/input_dialog.h"
#include "ui/install_paths.h"
#include "ui/qt_file_dialogs.h"
#include "ui/qt_prompts.h"
#include "ui/qt_settings_store.h"
#include "ui/report_window.h"
#include "ui/tool_icons.h"

#include <QActionGroup>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>
#include <QVBoxLayout>

namespace ampora::ui {

namespace {

struct ToolButton {
    const char* tip;
    const char* hint;
};

const ToolButton kToolButtons[9] = {
    {"", ""},
    {"Wire Tool", " Wire Tool.  When selected, click and drag to create a horizontal or vertical "
                  "segment of wire. "},
    {"Battery Tool",
     " Battery Tool.  When selected, click on a wire segment to create a battery. "},
    {"Resistor Tool",
     " Resistor Tool.  When selected, click on a wire segment to create a resistor. "},
    {"Current Source Tool", " Current Source Tool.  When selected, click on a wire segment to "
                            "create a current source. "},
    {"Number Tool", " Number Tool.  When selected, click on a device to enter a new value. "
                    "Negative reverses the direction. "},
    {"Move / Stretch Tool",
     " Move/Stretch Tool. Drag a component to move it or the end of a wire to stretch it. "},
    {"Erase Tool", " Erase Tool.  When selected, click a wire segment, battery, current source or "
                   "resistor to erase it. "},
    {"Undo Erase Tool",
     " UndoErase Tool.  Select it immediately after erasing an object to recover it. "},
};

const char* const kStartHint = " To begin, select the first tool (the Wire Tool), then click and "
                               "drag to create a horizontal or vertical segment of wire ";

constexpr int kStepPanelWidth = 150;

QLabel* WrappedLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

QLabel* StepCaption(const QString& text, QWidget* parent) {
    QLabel* caption = WrappedLabel(text, parent);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    return caption;
}

QPushButton* StepButton(const char* caption, const char* name, const char* tip, QWidget* parent) {
    auto* button = new QPushButton(QString::fromLatin1(caption), parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(tip));
    return button;
}

// The report window belongs to the report; it is found by its name to be hidden with the
// equations window.
void HideReportWindow(QWidget* main) {
    if (auto* report = main->findChild<QWidget*>(QStringLiteral("frmPublish"))) {
        report->hide();
    }
}

} // namespace

MainWindow::MainWindow(Workspace& workspace, WindowPorts ports, QWidget* parent)
    : QMainWindow(parent), workspace_(workspace) {
    setObjectName(QStringLiteral("frmMain"));
    canvas_ = new Canvas(workspace_, editor_, this);
    setCentralWidget(canvas_);
    if (ports.prompts == nullptr) {
        ownPrompts_ = std::make_unique<QtPrompts>(this, [this](float left, float top) {
            return canvas_->mapToGlobal(QPointF(left, top)).toPoint();
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
    connect(canvas_, &Canvas::NodeLabelClicked, this, &MainWindow::NodeLabelClicked);
    frmEquations_ = new EquationsWindow(workspace_, this);

    // Start-up: an untitled empty circuit in step 1, no tool, nothing to undo.
    workspace_.Step = 1;
    workspace_.ViewMode = 0;
    ResetEditor(editor_, false);
    ClearUndoMemory(workspace_.circuit);
    LoadRegSettings();
    FillRecentMenu();
    SetHint(QString::fromLatin1(kStartHint));
    frInstruct1_->setVisible(workspace_.preferences.ShowInstructions);
    chkInstructions_->setChecked(!workspace_.preferences.ShowInstructions);
    SyncToolbar();
    EnterStepPanel();
    UpdateCaption();
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

void MainWindow::BuildStepPanels() {
    stepPanels_ = new QStackedWidget(canvas_);
    stepPanels_->setObjectName(QStringLiteral("stepPanels"));
    stepPanels_->setAutoFillBackground(true);
    stepPanels_->setFrameShape(QFrame::StyledPanel);

    auto* picToolBox = new QWidget(stepPanels_);
    picToolBox->setObjectName(QStringLiteral("picToolBox"));
    auto* layout = new QVBoxLayout(picToolBox);
    layout->addWidget(
        StepCaption(QStringLiteral("Step 1 - design or edit the circuit"), picToolBox));
    layout->addStretch();
    QPushButton* cmdNext1 =
        StepButton("Next >", "cmdNext1", "Proceed to node naming step", picToolBox);
    layout->addWidget(cmdNext1);
    connect(cmdNext1, &QPushButton::clicked, this, &MainWindow::cmdNext1_Click);
    stepPanels_->addWidget(picToolBox);

    auto* picStep2 = new QWidget(stepPanels_);
    picStep2->setObjectName(QStringLiteral("picStep2"));
    layout = new QVBoxLayout(picStep2);
    layout->addWidget(StepCaption(
        QStringLiteral("Step 2 - name the nodes, name the reference node \"0\", choose options"),
        picStep2));
    QPushButton* autoName =
        StepButton("AutoName", "cmdAutoName1", "Let program name the node voltages", picStep2);
    QPushButton* clearNames =
        StepButton("Clear Names", "cmdAutoName2", "Clear node voltage names", picStep2);
    layout->addWidget(autoName);
    layout->addWidget(clearNames);
    layout->addWidget(MakeDrawingWarningsNote(picStep2, lblDrawingWarnings_), 1);
    auto* moves = new QHBoxLayout;
    QPushButton* cmdPrev2 =
        StepButton("< Prev", "cmdPrev2", "Back to circuit design step", picStep2);
    QPushButton* cmdNext2 =
        StepButton("Next >", "cmdNext2", "Proceed to view results step", picStep2);
    moves->addWidget(cmdPrev2);
    moves->addWidget(cmdNext2);
    layout->addLayout(moves);
    connect(autoName, &QPushButton::clicked, this, [this] { cmdAutoName_Click(1); });
    connect(clearNames, &QPushButton::clicked, this, [this] { cmdAutoName_Click(2); });
    connect(cmdPrev2, &QPushButton::clicked, this, &MainWindow::cmdPrev2_Click);
    connect(cmdNext2, &QPushButton::clicked, this, &MainWindow::cmdNext2_Click);
    stepPanels_->addWidget(picStep2);

    auto* picStep3 = new QWidget(stepPanels_);
    picStep3->setObjectName(QStringLiteral("picStep3"));
    layout = new QVBoxLayout(picStep3);
    layout->addWidget(StepCaption(QStringLiteral("Step 3- view the results"), picStep3));
    struct View {
        const char* caption;
        const char* name;
        const char* tip;
    };
    const View views[] = {
        {"Circuit", "cmdViewCircuit", "Show component values"},
        {"Current", "cmdViewCurrent", "Show currents in circuit diagram"},
        {"Voltage", "cmdViewVoltage", "Show voltages in circuit diagram"},
        {"Power", "cmdViewPower", "Show power in circuit diagram"},
    };
    // The pressed button shows which view the diagram is in.
    viewButtons_ = new QButtonGroup(picStep3);
    for (int mode = 0; mode < 4; ++mode) {
        const View& view = views[mode];
        QPushButton* button = StepButton(view.caption, view.name, view.tip, picStep3);
        button->setCheckable(true);
        viewButtons_->addButton(button, mode);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, mode] { ViewButtonClicked(mode); });
    }
    layout->addStretch();
    QPushButton* cmdPrev3 = StepButton("< Prev", "cmdPrev3", "Back to node naming step", picStep3);
    layout->addWidget(cmdPrev3);
    connect(cmdPrev3, &QPushButton::clicked, this, &MainWindow::cmdPrev3_Click);
    stepPanels_->addWidget(picStep3);
}

// ---- the three steps ----

void MainWindow::EnterStepPanel() {
    const int step = std::clamp<int>(workspace_.Step, 1, 3);
    stepPanels_->setCurrentIndex(step - 1);
    // The tools edit the circuit, which only step 1 may change.
    toolbar_->setEnabled(step == 1);
    mnuFilePrint_->setEnabled(step == 3);
    mnuFileExportMatrix_->setEnabled(step == 3);
    if (QAbstractButton* view = viewButtons_->button(workspace_.ViewMode)) {
        view->setChecked(true);
    }
}

void MainWindow::cmdNext1_Click() {
    const TransitionResult result = LeaveStep1(workspace_, *prompts_);
    MatchUndoToMemory(workspace_.circuit, editor_);
    SyncToolbar();
    if (result == TransitionResult::Entered) {
        ShowDrawingWarnings(lblDrawingWarnings_, workspace_.topology.Warnings);
        // No tool stays selected.
        editor_.CurrentTool = kNoTool;
        canvas_->unsetCursor();
        SyncToolbar();
        EnterStepPanel();
        SetStepStatus(QString::fromLatin1(kStep2EntryStatus));
        SetHint(QString());
    }
    canvas_->update(); // the wire clean-up shows even when the circuit is refused
}

void MainWindow::cmdPrev2_Click() {
    BackToStep1(workspace_);
    EnterStepPanel();
    SetStepStatus(QString::fromLatin1(kStep1Status));
    SetHint(QString()); // the hint of what was pointed at before belongs to the old step
    canvas_->update();
}

void MainWindow::cmdNext2_Click() {
    if (LeaveStep2(workspace_, *prompts_) != TransitionResult::Entered) {
        canvas_->update(); // names may have been put in order, nothing else changed
        return;
    }
    EnterStepPanel();
    SetStepStatus(QString::fromLatin1(kStep3Status));
    SetHint(QString());
    frmEquations_->Rebuild();
    frmEquations_->show();
    // Once shown its tabs are laid out, and what they lack in room can be measured.
    frmEquations_->FitToContents();
    frmEquations_->ScrollToTop();
    canvas_->update();
}

void MainWindow::cmdPrev3_Click() {
    BackToStep2(workspace_);
    frmEquations_->hide();
    HideReportWindow(this);
    EnterStepPanel();
    SetStepStatus(QString::fromLatin1(kStep2ReturnStatus));
    SetHint(QString());
    canvas_->update();
}

void MainWindow::cmdAutoName_Click(int index) {
    if (workspace_.Step != 2) {
        return;
    }
    if (index == 1) {
        AutoName(workspace_, *prompts_);
    } else {
        ClearNames(workspace_.circuit);
    }
    canvas_->update();
}

void MainWindow::NodeLabelClicked(int slot) {
    const DiagramLabels labels = canvas_->CurrentLabels();
    if (workspace_.Step != 2 || slot < 1 || static_cast<std::size_t>(slot) >= labels.Nodes.size()) {
        return;
    }
    const LabelBox box = labels.Nodes[static_cast<std::size_t>(slot)].Box;
    // The dialog opens beside the label, on the side with room for it, so the name it asks
    // about stays in sight.
    InputDialog probe(this, QString::fromLatin1(kRenamePrompt),
                      QString::fromStdString(workspace_.circuit.NodeLabels[slot].Name));
    probe.adjustSize();
    constexpr float kGap = 12;
    float left = box.Left + box.Width + kGap;
    const QPoint right = canvas_->mapToGlobal(QPointF(left, box.Top)).toPoint();
    const QScreen* where = screen();
    if (where != nullptr && right.x() + probe.width() > where->availableGeometry().right()) {
        left = box.Left - kGap - static_cast<float>(probe.width());
    }
    if (RenameNode(workspace_, *prompts_, slot, left, box.Top - 8)) {
        canvas_->update();
    }
}

void MainWindow::ViewButtonClicked(int viewMode) {
    if (workspace_.Step != 3) {
        return;
    }
    workspace_.ViewMode = static_cast<std::int16_t>(viewMode);
    SetHint(QString::fromStdString(ViewButtonStatusText(viewMode)));
    WriteResultLabels();
    EnterStepPanel();
}

void MainWindow::WriteResultLabels() {
    WriteLabels(workspace_, workspace_.preferences.SigFigs);
    SetStepStatus(
        QString::fromStdString(ResultsStatusText(workspace_, workspace_.preferences.SigFigs)));
    canvas_->update();
}

void MainWindow::ShowReport() {
    if (workspace_.Step == 3) {
        ShowReportWindow(this, workspace_, prompts_);
        emit ReportRequested();
    }
}

void MainWindow::BuildInstructions() {
    frInstruct1_ = new QFrame(canvas_);
    frInstruct1_->setObjectName(QStringLiteral("frInstruct1"));
    frInstruct1_->setFrameShape(QFrame::Box);
    frInstruct1_->setAutoFillBackground(true);
    QPalette palette = frInstruct1_->palette();
    palette.setColor(QPalette::Window, QColor(0xFF, 0xFF, 0xF0));
    frInstruct1_->setPalette(palette);
    auto* layout = new QVBoxLayout(frInstruct1_);
    QLabel* title = WrappedLabel(QStringLiteral("Instructions:"), frInstruct1_);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    layout->addWidget(title);
    for (const char* line :
         {"Follow these three steps:",
          "Step 1 - design a new circuit or edit the present circuit using the toolbar tools, or "
          "read in a circuit file using the file menu",
          "Step 2 - number the nodes and choose the reference node",
          "Step 3 - review the equations and results", "Click on OK to begin step 1 now:"}) {
        layout->addWidget(WrappedLabel(QString::fromLatin1(line), frInstruct1_));
    }
    chkInstructions_ =
        new QCheckBox(QStringLiteral("Don't show these instructions again"), frInstruct1_);
    chkInstructions_->setObjectName(QStringLiteral("chkInstructions"));
    layout->addWidget(chkInstructions_);
    auto* cmdOK = new QPushButton(QStringLiteral("OK"), frInstruct1_);
    cmdOK->setObjectName(QStringLiteral("cmdOKInstruct1"));
    layout->addWidget(cmdOK, 0, Qt::AlignHCenter);
    connect(chkInstructions_, &QCheckBox::toggled, this,
            [this](bool ticked) { workspace_.preferences.ShowInstructions = !ticked; });
    connect(cmdOK, &QPushButton::clicked, frInstruct1_, &QWidget::hide);
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
        if (UndoErase(workspace_.circuit, editor_)) {
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

// ---- menus ----

void MainWindow::BuildMenus() {
    QMenu* mnuFile = menuBar()->addMenu(QStringLiteral("&File"));
    mnuFile->setObjectName(QStringLiteral("mnuFile"));
    connect(mnuFile, &QMenu::aboutToShow, this, [this] {
        SetHint(QStringLiteral(
            " Start a new circuit, open or save an existing circuit, or exit the program "));
    });
    const auto add = [this](QMenu* menu, const char* caption, const char* name,
                            const QKeySequence& keys, auto slot) {
        QAction* action = menu->addAction(QString::fromUtf8(caption));
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        if constexpr (!std::is_same_v<decltype(slot), std::nullptr_t>) {
            connect(action, &QAction::triggered, this, slot);
        }
        return action;
    };
    add(mnuFile, "Start a &new circuit", "mnuFileNew", QKeySequence::New,
        &MainWindow::FileNewClicked);
    add(mnuFile, "&Open a circuit file ...", "mnuFileOpen", QKeySequence::Open,
        &MainWindow::FileOpenClicked);
    add(mnuFile, "&Save the circuit", "mnuFileSave", QKeySequence::Save,
        &MainWindow::FileSaveClicked);
    add(mnuFile, "Save the circuit &as ...", "mnuFileSaveAs",
        QKeySequence(QStringLiteral("Ctrl+Shift+S")), &MainWindow::FileSaveAsClicked);
    // The report is made from the results of step 3.
    mnuFilePrint_ =
        add(mnuFile, "&Print report", "mnuFilePrint", QKeySequence(), &MainWindow::ShowReport);
    mnuFilePrint_->setEnabled(false);
    mnuFileExportMatrix_ =
        add(mnuFile, "Export &matrix...", "mnuFileExportMatrix", QKeySequence(), [this] {
            DocumentContext context = Context();
            ExportMatrix(context);
        });
    mnuFileExportMatrix_->setEnabled(false);
    mnuRecentFile_[0] = mnuFile->addSeparator();
    mnuRecentFile_[0]->setObjectName(QStringLiteral("mnuRecentFile0"));
    for (int i = 1; i <= kRecentFileCount; ++i) {
        QAction* action = mnuFile->addAction(QStringLiteral("recentfile %1").arg(i));
        action->setObjectName(QStringLiteral("mnuRecentFile%1").arg(i));
        action->setVisible(false);
        connect(action, &QAction::triggered, this, [this, i] { RecentFileClicked(i); });
        mnuRecentFile_[static_cast<std::size_t>(i)] = action;
    }
    mnuFile->addSeparator();
    add(mnuFile, "E&xit the program", "mnuFileExit", QKeySequence(QStringLiteral("Ctrl+Q")),
        &QWidget::close);

    QMenu* mnuOptions = menuBar()->addMenu(QStringLiteral("&Options"));
    mnuOptions->setObjectName(QStringLiteral("mnuOptions"));
    connect(mnuOptions, &QMenu::aboutToShow, this, &MainWindow::OptionsAboutToShow);
    mnuDrawGrid_ = mnuOptions->addAction(QStringLiteral("Show &grid in step 1"));
    mnuDrawGrid_->setObjectName(QStringLiteral("mnuDrawGrid"));
    mnuDrawGrid_->setCheckable(true);
    mnuDrawGrid_->setChecked(canvas_->ShowGrid());
    connect(mnuDrawGrid_, &QAction::toggled, this, [this](bool checked) {
        canvas_->SetShowGrid(checked);
        SetHint(QString());
    });

    const auto submenu = [this, mnuOptions](const char* caption, const char* name,
                                            const char* hint) {
        QMenu* menu = mnuOptions->addMenu(QString::fromLatin1(caption));
        menu->setObjectName(QString::fromLatin1(name));
        const QString text = QString::fromLatin1(hint);
        if (!text.isEmpty()) {
            connect(menu, &QMenu::aboutToShow, this, [this, text] { SetHint(text); });
        }
        auto* group = new QActionGroup(menu);
        return std::make_pair(menu, group);
    };
    const auto item = [](QMenu* menu, QActionGroup* group, const QString& caption,
                         const QString& name) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        action->setCheckable(true);
        group->addAction(action);
        return action;
    };

    auto [mnuAutoName, nameGroup] = submenu(
        "&AutoName pattern", "mnuAutoName",
        " Style used to AutoName nodes in the circuit diagram and node voltages in the equations ");
    const QString patterns[] = {QStringLiteral("V1, V2, V3, ..."), QStringLiteral("A, B, C, ..."),
                                QStringLiteral("a, b, c, ...")};
    for (int i = 1; i <= 3; ++i) {
        QAction* action =
            item(mnuAutoName, nameGroup, patterns[i - 1], QStringLiteral("mnuAName%1").arg(i));
        connect(action, &QAction::triggered, this, [this, i] { mnuAName_Click(i); });
        mnuAName_[static_cast<std::size_t>(i)] = action;
    }
    auto [mnuSigFigs, figsGroup] = submenu(
        "&Sig figs", "mnuSigFigs", " Number of significant figures used to display answers ");
    for (int i = 3; i <= 8; ++i) {
        QAction* action =
            item(mnuSigFigs, figsGroup, QString::number(i), QStringLiteral("mnuSF%1").arg(i));
        connect(action, &QAction::triggered, this, [this, i] { mnuSF_Click(i); });
        mnuSF_[static_cast<std::size_t>(i)] = action;
    }
    auto [mnuFont, fontGroup] =
        submenu("&Font", "mnuFont", " Font name and size used in the report ");
    const QString fonts[] = {QStringLiteral("Arial 10 pt"), QStringLiteral("Times Roman 10 pt"),
                             QStringLiteral("Times Roman 12 pt"),
                             QStringLiteral("Times Roman 16 pt")};
    for (int i = 1; i <= 4; ++i) {
        QAction* action = item(mnuFont, fontGroup, fonts[i - 1], QStringLiteral("mnuF%1").arg(i));
        connect(action, &QAction::triggered, this, [this, i] { mnuF_Click(i); });
        mnuF_[static_cast<std::size_t>(i)] = action;
    }
    mnuReportRowOperations_ =
        mnuOptions->addAction(QStringLiteral("Include &row operations in the report"));
    mnuReportRowOperations_->setObjectName(QStringLiteral("mnuReportRowOperations"));
    mnuReportRowOperations_->setCheckable(true);
    connect(mnuReportRowOperations_, &QAction::toggled, this,
            [this](bool checked) { workspace_.preferences.ReportRowOperations = checked; });
    mnuCenter_ = mnuOptions->addAction(QStringLiteral("&Center the circuit"));
    mnuCenter_->setObjectName(QStringLiteral("mnuCenter"));
    connect(mnuCenter_, &QAction::triggered, this, [this] {
        canvas_->CenterDrawing();
        SetHint(QString());
    });

    QMenu* mnuHelp = menuBar()->addMenu(QStringLiteral("&Help"));
    mnuHelp->setObjectName(QStringLiteral("mnuHelp"));
    add(mnuHelp, "Help with the &program", "mnuHelpProgram", QKeySequence::HelpContents,
        [this] { ShowHelpTopic(this, QStringLiteral("index.htm")); });
    add(mnuHelp, "Help with &electricity and math", "mnuHelpTheory", QKeySequence(),
        [this] { ShowHelpTopic(this, QStringLiteral("dc cct help/theory.htm")); });
    add(mnuHelp, "&About DC Ampora", "mnuHelpAbout", QKeySequence(),
        [this] { ShowAboutBox(this); });
}

void MainWindow::OptionsAboutToShow() {
    const bool editing = workspace_.Step == 1;
    mnuDrawGrid_->setEnabled(editing);
    mnuCenter_->setEnabled(editing);
}

void MainWindow::mnuSF_Click(int index) {
    if (index < 3 || index > 8) {
        return;
    }
    workspace_.preferences.SigFigs = static_cast<std::int16_t>(index);
    mnuSF_[static_cast<std::size_t>(index)]->setChecked(true);
    SetHint(QString());
    if (workspace_.Step == 3) {
        // Caption 4 of a single unknown quotes its value.
        workspace_.equations.EqnText = ChooseEqnText(workspace_, index);
        frmEquations_->Rebuild();
        WriteResultLabels();
    }
}

void MainWindow::mnuF_Click(int index) {
    if (index < 1 || index > 4) {
        return;
    }
    workspace_.preferences.FontIndex = static_cast<std::int16_t>(index);
    mnuF_[static_cast<std::size_t>(index)]->setChecked(true);
    SetHint(QString());
    if (workspace_.Step == 3) {
        frmEquations_->Rebuild();
    }
}

void MainWindow::mnuAName_Click(int index) {
    if (index < 1 || index > 3) {
        return;
    }
    workspace_.preferences.AutoNamePattern = static_cast<std::int16_t>(index);
    mnuAName_[static_cast<std::size_t>(index)]->setChecked(true);
    SetHint(QString());
}

void MainWindow::FillRecentMenu() {
    const RecentFiles files = LoadRecentFiles(*store_);
    bool any = false;
    for (int i = 1; i <= kRecentFileCount; ++i) {
        const QString path = QString::fromStdString(files[static_cast<std::size_t>(i - 1)]);
        QAction* action = mnuRecentFile_[static_cast<std::size_t>(i)];
        // A path is shown as it is: an "&" in it is no access key.
        action->setText(path.isEmpty()
                            ? QStringLiteral("recentfile %1").arg(i)
                            : QString(path).replace(QLatin1Char('&'), QStringLiteral("&&")));
        action->setData(path);
        action->setVisible(!path.isEmpty());
        any = any || !path.isEmpty();
    }
    mnuRecentFile_[0]->setVisible(any);
}

// ---- file commands ----

DocumentContext MainWindow::Context() {
    return DocumentContext{workspace_, *prompts_, *dialogs_, *store_, ExamplesDir().toStdString()};
}

void MainWindow::AfterCommand(const CommandResult& result) {
    if (result.cleared) {
        ResetEditor(editor_, result.undoAvailable);
        canvas_->unsetCursor();
        SetHint(QString::fromLatin1(kToolButtons[kWireTool].hint));
        SetStepStatus(QString());
        frmEquations_->hide();
        HideReportWindow(this);
        EnterStepPanel();
    }
    if (result.fileRead) {
        // The labels of a file's devices show their stored values.
        editor_.ValueText.items.fill(std::string());
    }
    FillRecentMenu();
    SyncToolbar();
    UpdateCaption();
    canvas_->update();
}

void MainWindow::FileNewClicked() {
    DocumentContext context = Context();
    AfterCommand(FileNew(context));
}

void MainWindow::FileOpenClicked() {
    DocumentContext context = Context();
    AfterCommand(FileOpen(context));
}

void MainWindow::RecentFileClicked(int index) {
    DocumentContext context = Context();
    const QString path = mnuRecentFile_[static_cast<std::size_t>(index)]->data().toString();
    AfterCommand(OpenRecent(context, path.toStdString()));
}

void MainWindow::OpenFileFromDesktop(const QString& path) {
    DocumentContext context = Context();
    AfterCommand(OpenRecent(context, path.toStdString()));
}

void MainWindow::FileSaveClicked() {
    DocumentContext context = Context();
    FileSave(context);
    AfterCommand(CommandResult{});
}

void MainWindow::FileSaveAsClicked() {
    DocumentContext context = Context();
    FileSaveAs(context);
    AfterCommand(CommandResult{});
}

void MainWindow::closeEvent(QCloseEvent* event) {
    DocumentContext context = Context();
    RunSavePrompt(context);
    SaveRegSettings();
    event->accept();
}

// ---- preferences and geometry ----

double MainWindow::TwipsPerPixel() const {
    const QScreen* s = screen();
    const double dpi = s != nullptr && s->logicalDotsPerInchX() > 0 ? s->logicalDotsPerInchX() : 96;
    return 1440.0 / dpi;
}

ScreenSize MainWindow::ScreenInTwips() const {
    const QScreen* s = screen();
    const QSize size = s != nullptr ? s->geometry().size() : QSize(1024, 768);
    const double tpp = TwipsPerPixel();
    return ScreenSize{static_cast<float>(size.width() * tpp),
                      static_cast<float>(size.height() * tpp)};
}

WindowGeometry MainWindow::GeometryOf(const QWidget* window) const {
    if (window->isMinimized()) {
        return WindowGeometry{}; // too small to keep: the default layout is saved instead
    }
    const double tpp = TwipsPerPixel();
    return WindowGeometry{
        static_cast<float>(window->width() * tpp), static_cast<float>(window->height() * tpp),
        static_cast<float>(window->pos().x() * tpp), static_cast<float>(window->pos().y() * tpp)};
}

WindowGeometry MainWindow::CurrentGeometry() const {
    return GeometryOf(this);
}

void MainWindow::ApplyGeometryTo(QWidget* window, const WindowGeometry& g) {
    const double tpp = TwipsPerPixel();
    window->resize(static_cast<int>(g.Width / tpp + 0.5), static_cast<int>(g.Height / tpp + 0.5));
    window->move(static_cast<int>(g.Left / tpp + 0.5), static_cast<int>(g.Top / tpp + 0.5));
}

void MainWindow::ApplyGeometry(const WindowGeometry& g) {
    ApplyGeometryTo(this, g);
}

void MainWindow::SetDefaultFormSize() {
    const double tpp = TwipsPerPixel();
    resize(static_cast<int>(kDefaultMainWidth / tpp + 0.5),
           static_cast<int>(kDefaultMainHeight / tpp + 0.5));
    // The left edge uses the width the window took, which a small screen may have cut.
    const WindowGeometry main = DefaultMainGeometry(
        ScreenInTwips(), static_cast<float>(width() * tpp), static_cast<float>(height() * tpp));
    ApplyGeometry(main);
    ApplyGeometryTo(frmEquations_, DefaultEquationsGeometry(main));
}

void MainWindow::LoadRegSettings() {
    const StoredSettings stored = ampora::LoadRegSettings(*store_, ScreenInTwips());
    mnuSF_Click(stored.preferences.SigFigs);
    mnuF_Click(stored.preferences.FontIndex);
    mnuAName_Click(stored.preferences.AutoNamePattern);
    if (stored.UseStoredGeometry) {
        ApplyGeometry(stored.Main);
        ApplyGeometryTo(frmEquations_, stored.Equations);
    } else {
        SetDefaultFormSize();
    }
    workspace_.preferences.ShowInstructions = stored.preferences.ShowInstructions;
    mnuReportRowOperations_->setChecked(stored.preferences.ReportRowOperations);
}

void MainWindow::SaveRegSettings() {
    ampora::SaveRegSettings(*store_, workspace_.preferences, CurrentGeometry(),
                            GeometryOf(frmEquations_), ScreenInTwips());
}

} // namespace ampora::ui
