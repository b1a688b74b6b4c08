#pragma once
// The main window: the canvas with its toolbar, the step panels, the instructions, the
// menus and the status bar, and the file commands and preferences behind them.

#include "editor/editor_state.h"
#include "practice/practice_shape.h"
#include "settings/preferences.h"

#include <QMainWindow>
#include <array>
#include <memory>

class QAction;
class QButtonGroup;
class QActionGroup;
class QCheckBox;
class QFrame;
class QLabel;
class QMenu;
class QPushButton;
class QStackedWidget;
class QToolBar;

namespace ampora {
struct Workspace;
struct Prompts;
struct FileDialogs;
struct SettingsStore;
struct DocumentContext;
struct CommandResult;
} // namespace ampora

namespace ampora::ui {

class Canvas;
class EditCommands;
class EquationsWindow;

// What the window talks to outside itself; any left null gets its Qt implementation
// (message boxes, file dialogs, QSettings). Tests hand in their own.
struct WindowPorts {
    Prompts* prompts = nullptr;
    FileDialogs* dialogs = nullptr;
    SettingsStore* store = nullptr;
};

class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    explicit MainWindow(Workspace& workspace, WindowPorts ports = {}, QWidget* parent = nullptr);
    ~MainWindow() override;

    // "DC Ampora - [untitled]" or "DC Ampora - " and the file's path.
    void UpdateCaption();

    // The menu handlers through which the saved preferences are applied too.
    void mnuSF_Click(int index);
    void mnuF_Click(int index);
    void mnuAName_Click(int index);
    // Options > "Practice: hide the answers": in step 3 the results stay hidden until every
    // equation the student writes is right or the student asks for the answers.
    void mnuPractice_Click(bool checked);

    // Opens the file the desktop handed over (a double-click on an .amq file).
    void OpenFileFromDesktop(const QString& path);

    Canvas* canvas() const { return canvas_; }
    EditorState& editor() { return editor_; }
    EquationsWindow* equationsWindow() const { return frmEquations_; }
    EditCommands* editCommands() const { return edits_; }
    // The hint panel (tools, menus, view buttons) and the step panel of the status bar.
    QString StatusText() const;
    QString StepStatusText() const;

  public slots:
    // "Print report": the report is built from the results of step 3.
    void ShowReport();

  signals:
    void ReportRequested();

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void BuildToolbar();
    void BuildMenus();
    void BuildStepPanels();
    void BuildInstructions();
    void LayOutCanvasChildren();
    // The keyboard and the screen reader: shortcuts, the View menu, accessible names.
    void BuildAccess();
    void NameControlsForReaders();

    void LoadRegSettings();
    void SaveRegSettings();
    void SetDefaultFormSize();
    ScreenSize ScreenInTwips() const;
    double TwipsPerPixel() const;
    WindowGeometry CurrentGeometry() const;
    void ApplyGeometry(const WindowGeometry& geometry);

    void ChooseToolbarButton(int button);
    void SyncToolbar();
    void SetHint(const QString& text);
    void FillRecentMenu();

    DocumentContext Context();
    void AfterCommand(const CommandResult& result);
    void FileNewClicked();
    void NewPracticeCircuitClicked();
    void FileOpenClicked();
    void RecentFileClicked(int index);
    void FileSaveClicked();
    void FileSaveAsClicked();
    void OptionsAboutToShow();

    void cmdNext1_Click();
    void cmdPrev2_Click();
    void cmdNext2_Click();
    void cmdPrev3_Click();
    void cmdAutoName_Click(int index);
    void ViewButtonClicked(int viewMode);
    void NodeLabelClicked(int slot);
    // Shows the panel, tools and menus of the workspace's step.
    void EnterStepPanel();
    void HideResultWindows();
    void SetStepStatus(const QString& text);
    // The labels of step 3 and the power totals, after a view or a preference changed.
    void WriteResultLabels();
    WindowGeometry GeometryOf(const QWidget* window) const;
    void ApplyGeometryTo(QWidget* window, const WindowGeometry& geometry);

    Workspace& workspace_;
    EditorState editor_;
    PracticeShape practiceShape_; // what File > New practice circuit... asked for last
    std::unique_ptr<Prompts> ownPrompts_;
    std::unique_ptr<FileDialogs> ownDialogs_;
    std::unique_ptr<SettingsStore> ownStore_;
    Prompts* prompts_;
    FileDialogs* dialogs_;
    SettingsStore* store_;
    EquationsWindow* frmEquations_ = nullptr;
    EditCommands* edits_ = nullptr; // the Edit menu and the undo history

    Canvas* canvas_ = nullptr;
    QToolBar* toolbar_ = nullptr;
    std::array<QAction*, 9> toolActions_{}; // 1..8
    QStackedWidget* stepPanels_ = nullptr;
    QButtonGroup* viewButtons_ = nullptr; // ids are the view modes 0..3
    QFrame* frInstruct1_ = nullptr;
    QCheckBox* chkInstructions_ = nullptr;
    QLabel* hint_ = nullptr;
    QLabel* stepStatus_ = nullptr;
    QLabel* lblDrawingWarnings_ = nullptr; // step 2: devices the analysis reads differently
    QAction* mnuDrawGrid_ = nullptr;
    QAction* mnuCenter_ = nullptr;
    QAction* mnuFilePrint_ = nullptr;
    QAction* mnuFileExportMatrix_ = nullptr;
    QAction* mnuReportRowOperations_ = nullptr;
    std::array<QAction*, 5> mnuRecentFile_{}; // 0 is the separator
    std::array<QAction*, 9> mnuSF_{};         // 3..8
    std::array<QAction*, 5> mnuF_{};          // 1..4
    std::array<QAction*, 4> mnuAName_{};      // 1..3
    QAction* mnuPractice_ = nullptr;
    bool answersHidden_ = false; // step 3 of a student practising

    void HideAnswers(bool hidden);
};

} // namespace ampora::ui
