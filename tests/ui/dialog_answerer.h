#pragma once
// Answers the modal dialogs a test makes the window open, in order, as a user would: types
// into the input dialog and presses Enter or Escape, or presses a message box's button.
// Records what each dialog said.

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <deque>
#include <functional>

namespace ampora::test {

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
    // Input dialog or message box: Escape.
    void Escape() {
        answers_.push_back([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    }
    // Message box: press the button (Ok, Yes or No).
    void Press(QMessageBox::StandardButton which) {
        answers_.push_back([which](QWidget* dialog) {
            auto* box = qobject_cast<QMessageBox*>(dialog);
            QTest::mouseClick(box->button(which), Qt::LeftButton);
        });
    }

    QStringList seen; // one line per dialog: its text, and for input its default
    bool Idle() const { return answers_.empty(); }

  private:
    void Poll() {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || dialog == last_ || answers_.empty()) {
            return;
        }
        last_ = dialog;
        if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
            seen << box->windowTitle() + ": " + box->text();
        } else if (auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("txtInput"))) {
            const auto* label = dialog->findChild<QLabel*>(QStringLiteral("Label1"));
            seen << label->text() + " [" + edit->text() + "]" +
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

} // namespace ampora::test
