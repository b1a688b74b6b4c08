// The main window on the keyboard and for screen readers: the letters and arrows of the
// canvas reach the toolbar and the status bar, the step buttons get their keys, the View
// menu zooms, and every control carries a name and a description a reader can speak.

#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/main_window.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QToolBar>
#include <QToolButton>

namespace ampora::ui {

namespace {

// The key each toolbar button answers to on the canvas, by button number.
const char* const kToolKeys[9] = {"", "W", "B", "R", "I", "N", "M", "E", "U"};

class InstructionsKeys : public QObject {
  public:
    InstructionsKeys(QFrame* frame, QWidget* window, QWidget* focusAfter)
        : QObject(frame), frame_(frame), focusAfter_(focusAfter) {
        for (const QKeySequence& keys : {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter),
                                         QKeySequence(Qt::Key_Escape)}) {
            // Only while the focus is in the main window: the same keys type and check in
            // the other windows.
            auto* shortcut = new QShortcut(keys, window);
            shortcut->setContext(Qt::WidgetWithChildrenShortcut);
            shortcut->setObjectName(QStringLiteral("closeInstructions"));
            connect(shortcut, &QShortcut::activated, this, [this] {
                frame_->hide();
                focusAfter_->setFocus(Qt::OtherFocusReason);
            });
            shortcuts_.push_back(shortcut);
        }
        frame->installEventFilter(this);
        Follow();
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        // ShowToParent and HideToParent come also while the window itself is not yet shown,
        // as when the stored preference hides the panel at start-up.
        const QEvent::Type type = event->type();
        if (type == QEvent::Show || type == QEvent::Hide || type == QEvent::ShowToParent ||
            type == QEvent::HideToParent) {
            Follow();
        }
        return false;
    }

  private:
    // The keys close the panel only while it is shown; then they belong to the canvas.
    void Follow() {
        for (QShortcut* shortcut : shortcuts_) {
            shortcut->setEnabled(!frame_->isHidden());
        }
    }

    QFrame* frame_;
    QWidget* focusAfter_;
    std::vector<QShortcut*> shortcuts_;
};

} // namespace

void MainWindow::BuildAccess() {
    connect(canvas_, &Canvas::ToolKeyPressed, this, &MainWindow::ChooseToolbarButton);
    connect(canvas_, &Canvas::KeyHint, this, &MainWindow::SetHint);

    // View, before Help.
    auto* mnuView = new QMenu(QStringLiteral("&View"), this);
    mnuView->setObjectName(QStringLiteral("mnuView"));
    QAction* help = nullptr;
    for (QAction* action : menuBar()->actions()) {
        if (action->menu() != nullptr && action->menu()->objectName() == QLatin1String("mnuHelp")) {
            help = action;
        }
    }
    menuBar()->insertMenu(help, mnuView);
    const auto add = [this, mnuView](const QString& caption, const char* name,
                                     QList<QKeySequence> keys, auto slot) {
        QAction* action = mnuView->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, canvas_, slot);
        return action;
    };
    // Ctrl+= is Ctrl++ without Shift on most keyboards.
    add(QStringLiteral("Zoom &in"), "mnuZoomIn",
        {QKeySequence::ZoomIn, QKeySequence(QStringLiteral("Ctrl+="))}, &Canvas::ZoomIn);
    add(QStringLiteral("Zoom &out"), "mnuZoomOut", {QKeySequence::ZoomOut}, &Canvas::ZoomOut);
    add(QStringLiteral("&Fit"), "mnuZoomFit", {QKeySequence(QStringLiteral("Ctrl+0"))},
        &Canvas::FitDrawing);
    connect(mnuView, &QMenu::aboutToShow, this, [this] {
        SetHint(QStringLiteral(" Zoom the drawing in or out, or fit all of it in the window "));
    });

    // "Next >" and "< Prev" of whichever step is shown; a hidden button's key is idle.
    for (const char* name : {"cmdNext1", "cmdNext2"}) {
        findChild<QPushButton*>(QString::fromLatin1(name))
            ->setShortcut(QKeySequence(QStringLiteral("Alt+N")));
    }
    for (const char* name : {"cmdPrev2", "cmdPrev3"}) {
        findChild<QPushButton*>(QString::fromLatin1(name))
            ->setShortcut(QKeySequence(QStringLiteral("Alt+P")));
    }
    for (int mode = 0; mode < 4; ++mode) {
        viewButtons_->button(mode)->setShortcut(QKeySequence(Qt::Key_1 + mode));
    }
    new InstructionsKeys(frInstruct1_, this, canvas_);
    NameControlsForReaders();
    canvas_->setFocus(Qt::OtherFocusReason);
}

void MainWindow::NameControlsForReaders() {
    for (int button = 1; button <= 8; ++button) {
        QAction* action = toolActions_[static_cast<std::size_t>(button)];
        if (QWidget* widget = toolbar_->widgetForAction(action)) {
            widget->setAccessibleName(action->toolTip());
            widget->setAccessibleDescription(
                action->statusTip().trimmed() + QStringLiteral(" Key on the drawing: ") +
                QString::fromLatin1(kToolKeys[button]) + QLatin1Char('.'));
        }
    }
    toolbar_->setAccessibleName(QStringLiteral("Tools"));
    stepPanels_->setAccessibleName(QStringLiteral("Steps"));
    // A button is named by its caption and described by its tip, with its key.
    for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
        if (qobject_cast<QToolButton*>(button) != nullptr) {
            continue;
        }
        QString description = button->toolTip();
        if (!button->shortcut().isEmpty()) {
            description += (description.isEmpty() ? QString() : QStringLiteral(". ")) +
                           QStringLiteral("Key: ") +
                           button->shortcut().toString(QKeySequence::NativeText);
        }
        button->setAccessibleName(button->text().remove(QLatin1Char('&')));
        button->setAccessibleDescription(description);
    }
    chkInstructions_->setAccessibleDescription(
        QStringLiteral("Ticked, the instructions stay hidden when the program starts"));
    findChild<QPushButton*>(QStringLiteral("cmdOKInstruct1"))
        ->setAccessibleDescription(QStringLiteral("Closes the instructions. Key: Enter or Escape"));
    frInstruct1_->setAccessibleName(QStringLiteral("Instructions"));
    frInstruct1_->setAccessibleDescription(
        QStringLiteral("Enter or Escape closes the instructions"));
    findChild<QLabel*>(QStringLiteral("StatusPanel1"))
        ->setAccessibleName(QStringLiteral("Step status"));
    findChild<QLabel*>(QStringLiteral("StatusBar1"))->setAccessibleName(QStringLiteral("Hint"));
}

} // namespace ampora::ui
