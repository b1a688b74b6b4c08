#include "ui/main_window.h"

#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "document/circuit_edit.h"
#include "editor/editing_tools.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/drawing_warnings_note.h"
#include "ui/edit_commands.h"
#include "ui/equations_window.h"
#include "ui/input_dialog.h"
#include "ui/report_window.h"
#include "workflow/step_transitions.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace ampora::ui {

namespace {

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

} // namespace

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
    mnuFilePrint_->setEnabled(step == 3 && !answersHidden_);
    mnuFileExportMatrix_->setEnabled(step == 3);
    if (QAbstractButton* view = viewButtons_->button(workspace_.ViewMode)) {
        view->setChecked(true);
    }
    // Undo and Redo reach what the step may change.
    edits_->Sync();
}

void MainWindow::cmdNext1_Click() {
    const TransitionResult result = LeaveStep1(workspace_, *prompts_);
    edits_->TakeCleanedDrawing();
    MatchUndoToMemory(workspace_.Circuit, editor_);
    SyncToolbar();
    if (result == TransitionResult::Entered) {
        ShowDrawingWarnings(lblDrawingWarnings_, workspace_.Topology.Warnings);
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
    // A circuit without an unknown leaves no equation to practise on.
    HideAnswers(workspace_.Preferences.PracticeHideAnswers && workspace_.Equations.NumUnknowns > 0);
    frmEquations_->show();
    // Once shown its tabs are laid out, and what they lack in room can be measured.
    frmEquations_->FitToContents();
    frmEquations_->ScrollToTop();
    canvas_->update();
}

void MainWindow::cmdPrev3_Click() {
    BackToStep2(workspace_);
    HideResultWindows();
    EnterStepPanel();
    SetStepStatus(QString::fromLatin1(kStep2ReturnStatus));
    SetHint(QString());
    canvas_->update();
}

void MainWindow::cmdAutoName_Click(int index) {
    if (workspace_.Step != kStepName) {
        return;
    }
    if (index == 1) {
        AutoName(workspace_, *prompts_);
    } else {
        ClearNames(workspace_.Circuit);
    }
    edits_->Record(index == 1 ? "AutoName" : "Clear Names");
    canvas_->update();
}

void MainWindow::NodeLabelClicked(int slot) {
    const DiagramLabels labels = canvas_->CurrentLabels();
    if (workspace_.Step != kStepName || slot < 1 ||
        static_cast<std::size_t>(slot) >= labels.Nodes.size()) {
        return;
    }
    const LabelBox box = labels.Nodes[static_cast<std::size_t>(slot)].Box;
    // The dialog opens beside the label, on the side with room for it, so the name it asks
    // about stays in sight.
    InputDialog probe(this, QString::fromLatin1(kRenamePrompt),
                      QString::fromStdString(workspace_.Circuit.NodeLabels[slot].Name));
    probe.adjustSize();
    constexpr float kGap = 12;
    float left = box.Left + box.Width + kGap;
    const QPoint right = canvas_->mapToGlobal(canvas_->ToWidget(QPointF(left, box.Top))).toPoint();
    const QScreen* where = screen();
    if (where != nullptr && right.x() + probe.width() > where->availableGeometry().right()) {
        left = box.Left - kGap - static_cast<float>(probe.width() / canvas_->Zoom());
    }
    if (RenameNode(workspace_, *prompts_, slot, left, box.Top - 8)) {
        edits_->Record("Rename node");
        canvas_->update();
    }
}

void MainWindow::ViewButtonClicked(int viewMode) {
    if (workspace_.Step != kStepResults) {
        return;
    }
    workspace_.ViewMode = static_cast<std::int16_t>(viewMode);
    SetHint(QString::fromStdString(ViewButtonStatusText(viewMode)));
    WriteResultLabels();
    EnterStepPanel();
}

void MainWindow::WriteResultLabels() {
    WriteLabels(workspace_, workspace_.Preferences.SigFigs);
    SetStepStatus(
        QString::fromStdString(ResultsStatusText(workspace_, workspace_.Preferences.SigFigs)));
    canvas_->update();
}

void MainWindow::ShowReport() {
    if (workspace_.Step == kStepResults && !answersHidden_) {
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
            [this](bool ticked) { workspace_.Preferences.ShowInstructions = !ticked; });
    connect(cmdOK, &QPushButton::clicked, frInstruct1_, &QWidget::hide);
}

// The equations and report windows show one solution; they go when it does. The report
// window belongs to the report and is found by its name.
void MainWindow::HideResultWindows() {
    frmEquations_->hide();
    if (auto* report = findChild<QWidget*>(QStringLiteral("frmPublish"))) {
        report->hide();
    }
}

} // namespace ampora::ui
