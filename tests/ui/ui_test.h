#pragma once
// What the window tests share: the registry of test classes run by ui_tests, a user who answers
// the modal dialogs, and one main window with its own workspace, settings and dialogs.

#include "../support/memory_settings_store.h"
#include "../support/scripted_prompts.h"
#include "../support/test_files.h"
#include "tables/workspace.h"
#include "ui/canvas.h"
#include "ui/main_window.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QToolBar>
#include <QtTest>
#include <deque>
#include <functional>
#include <map>
#include <memory>

namespace ampora::test {

using UiTestMaker = std::function<std::unique_ptr<QObject>()>;
std::map<QString, UiTestMaker>& UiTests();

// Each test file holds one class, named in ui_tests' command line by the file's name.
template <typename T> bool RegisterUiTest(const char* file) {
    UiTests()[QFileInfo(QString::fromLatin1(file)).baseName()] = [] {
        return std::make_unique<T>();
    };
    return true;
}

inline QString ExamplePath(const QString& name) {
    return QStringLiteral(AMPORA_SOURCE_DIR "/examples/") + name;
}

// The hand-checked text of tests/data/NAME to compare a whole result with.
inline QString Expected(const char* name, const QString& actual) {
    return QString::fromStdString(ExpectedText(name, actual.toStdString()));
}

// Saves a picture of the widget when the developer asks for screenshots.
inline void Shoot(QWidget* widget, const QString& name) {
    const QByteArray dir = qgetenv("AMPORA_SCREENSHOT_DIR");
    if (!dir.isEmpty()) {
        QCoreApplication::processEvents(); // the layout settles as between two clicks
        widget->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
    }
}

// Answers the modal dialogs the window opens, in order, as a user would: types into the input
// dialog and presses Enter or Escape, or presses a message box's button. Records what each said.
class DialogAnswerer : public QObject {
  public:
    DialogAnswerer() {
        connect(&timer_, &QTimer::timeout, this, [this] { Poll(); });
        timer_.start(5);
    }
    // Input dialog: replace the selected default by `text` and press Enter.
    void Type(const QString& text) {
        answers_.push_back([text](QWidget* dialog) {
            auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("txtInput"));
            QTest::keyClicks(edit, text);
            QTest::keyClick(edit, Qt::Key_Return);
        });
    }
    void Escape() {
        answers_.push_back([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    }
    // Message box: press the button (Ok, Yes or No).
    void Press(QMessageBox::StandardButton which) {
        answers_.push_back([which](QWidget* dialog) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(dialog)->button(which), Qt::LeftButton);
        });
    }
    QStringList seen;   // one line per dialog: its text, and for input its default
    QList<QRect> where; // where each dialog stood
    bool Idle() const { return answers_.empty(); }

  private:
    void Poll() {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || dialog == last_ || answers_.empty()) {
            return;
        }
        last_ = dialog;
        where << dialog->frameGeometry();
        if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
            seen << box->windowTitle() + ": " + box->text();
        } else if (auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("txtInput"))) {
            seen << dialog->findChild<QLabel*>(QStringLiteral("Label1"))->text() + " [" +
                        edit->text() + "]" +
                        (edit->selectedText() == edit->text() ? "" : " not selected");
        }
        auto answer = std::move(answers_.front());
        answers_.pop_front();
        answer(dialog);
    }

    QTimer timer_;
    QPointer<QWidget> last_;
    std::deque<std::function<void(QWidget*)>> answers_;
};

// One main window. Scripted: its messages are recorded in `prompts` and its settings are held
// in `store` (three figures, no instructions). Real: message boxes and input dialogs answered
// by `answers`, settings in QSettings (the test points QSettings at its own folder).
struct Session {
    Workspace workspace;
    ScriptedPrompts prompts;
    MemorySettingsStore store;
    ScriptedFileDialogs files;
    DialogAnswerer answers;
    std::unique_ptr<ui::MainWindow> window;

    enum Kind { Scripted, RealPrompts, RealPromptsAndSettings };
    explicit Session(Kind kind = Scripted, QSize size = QSize(1000, 720),
                     const std::map<std::string, std::string>& settings = {}) {
        store.values = {{"Parameters/SigFigs", "3"}, {"Parameters/Instructions", "False"}};
        for (const auto& [key, value] : settings) {
            store.values[key] = value;
        }
        ui::WindowPorts ports{kind == Scripted ? &prompts : nullptr, &files,
                              kind == RealPromptsAndSettings ? nullptr : &store};
        window = std::make_unique<ui::MainWindow>(workspace, ports);
        window->resize(size);
        window->move(0, 0);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        canvas()->setFocus();
    }
    ui::Canvas* canvas() const { return window->canvas(); }
    template <typename T = QAction> T* Find(const char* name) const {
        return window->findChild<T*>(QString::fromLatin1(name));
    }
    void Press(const char* button) const {
        auto* b = Find<QPushButton>(button);
        QVERIFY2(b != nullptr && b->isVisible(), button);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    void ClickTool(int button) const {
        const QByteArray name = "Tool" + QByteArray::number(button);
        QTest::mouseClick(Find<QToolBar>("Toolbar")->widgetForAction(Find(name.constData())),
                          Qt::LeftButton);
    }
    void Click(QPoint at) const { QTest::mouseClick(canvas(), Qt::LeftButton, {}, at); }
    void Drag(QPoint from, QPoint to) const {
        QTest::mousePress(canvas(), Qt::LeftButton, {}, from);
        QTest::mouseMove(canvas(), (from + to) / 2);
        QTest::mouseMove(canvas(), to);
        QTest::mouseRelease(canvas(), Qt::LeftButton, {}, to);
    }
    // A key pressed where the user's would go: to the widget with the focus, in the window
    // that a closed dialog may have left inactive.
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) const {
        if (QApplication::activeWindow() == nullptr) {
            window->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(window.get()));
        }
        QWidget* to =
            QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : window.get();
        QTest::keyClick(to, static_cast<Qt::Key>(key), modifiers);
    }
    // Solves the example as a student does: step 2, AutoName, step 3.
    void Solve(const QString& example) const {
        window->OpenFileFromDesktop(ExamplePath(example));
        Press("cmdNext1");
        Press("cmdAutoName1");
        Press("cmdNext2");
    }
    QString Panel() const {
        return Find<QStackedWidget>("stepPanels")->currentWidget()->objectName();
    }
    QString Dump() const;
};

} // namespace ampora::test

// Adds the QObject test class to the ones ui_tests runs.
#define AMPORA_UI_TEST(Class)                                                                      \
    static const bool Class##Registered = ampora::test::RegisterUiTest<Class>(__FILE__)
