#include "ui/main_window.h"

#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "document/circuit_edit.h"
#include "document/document_commands.h"
#include "equations/counting_text.h"
#include "equations/matrix_export.h"
#include "settings/recent_files.h"
#include "tables/workspace.h"
#include "ui/about_box.h"
#include "ui/canvas.h"
#include "ui/edit_commands.h"
#include "ui/equations_window.h"
#include "ui/help_window.h"

#include <QAction>
#include <QActionGroup>
#include <QMenuBar>

namespace ampora::ui {

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
    add(mnuFile, "New &practice circuit...", "mnuFilePractice", QKeySequence(),
        &MainWindow::NewPracticeCircuitClicked);
    add(mnuFile, "&Open a circuit file ...", "mnuFileOpen", QKeySequence::Open,
        &MainWindow::FileOpenClicked);
    add(mnuFile, "&Save the circuit", "mnuFileSave", QKeySequence::Save,
        &MainWindow::FileSaveClicked);
    add(mnuFile, "Save the circuit &as ...", "mnuFileSaveAs",
        QKeySequence(QStringLiteral("Ctrl+Shift+S")), &MainWindow::FileSaveAsClicked);
    mnuFile->addAction(edits_->ExportAction());
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

    QMenu* mnuEdit = edits_->BuildEditMenu(this);
    menuBar()->addMenu(mnuEdit);
    connect(mnuEdit, &QMenu::aboutToShow, this, [this] {
        SetHint(QStringLiteral(" Undo or redo a change to the circuit, or copy the drawing as a "
                               "picture "));
    });

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
    mnuPractice_ = mnuOptions->addAction(QStringLiteral("Practice: hide the answers"));
    mnuPractice_->setObjectName(QStringLiteral("mnuPractice"));
    mnuPractice_->setCheckable(true);
    connect(mnuPractice_, &QAction::triggered, this, &MainWindow::mnuPractice_Click);
    mnuReportRowOperations_ =
        mnuOptions->addAction(QStringLiteral("Include &row operations in the report"));
    mnuReportRowOperations_->setObjectName(QStringLiteral("mnuReportRowOperations"));
    mnuReportRowOperations_->setCheckable(true);
    connect(mnuReportRowOperations_, &QAction::toggled, this,
            [this](bool checked) { workspace_.Preferences.ReportRowOperations = checked; });
    mnuCenter_ = mnuOptions->addAction(QStringLiteral("&Center the circuit"));
    mnuCenter_->setObjectName(QStringLiteral("mnuCenter"));
    connect(mnuCenter_, &QAction::triggered, this, [this] {
        canvas_->CenterDrawing();
        edits_->Record("Center the circuit");
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
    const bool editing = workspace_.Step == kStepEdit;
    mnuDrawGrid_->setEnabled(editing);
    mnuCenter_->setEnabled(editing);
}

void MainWindow::mnuSF_Click(int index) {
    if (index < 3 || index > 8) {
        return;
    }
    workspace_.Preferences.SigFigs = static_cast<std::int16_t>(index);
    mnuSF_[static_cast<std::size_t>(index)]->setChecked(true);
    SetHint(QString());
    if (workspace_.Step == kStepResults) {
        // Caption 4 of a single unknown quotes its value.
        workspace_.Equations.EqnText = ChooseEqnText(workspace_, index);
        frmEquations_->Rebuild();
        WriteResultLabels();
    }
}

void MainWindow::mnuF_Click(int index) {
    if (index < 1 || index > 4) {
        return;
    }
    workspace_.Preferences.FontIndex = static_cast<std::int16_t>(index);
    mnuF_[static_cast<std::size_t>(index)]->setChecked(true);
    SetHint(QString());
    if (workspace_.Step == kStepResults) {
        frmEquations_->Rebuild();
    }
}

void MainWindow::mnuAName_Click(int index) {
    if (index < 1 || index > 3) {
        return;
    }
    workspace_.Preferences.AutoNamePattern = static_cast<std::int16_t>(index);
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

} // namespace ampora::ui
