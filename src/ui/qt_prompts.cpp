#include "ui/qt_prompts.h"

#include "ui/input_dialog.h"

#include <QMessageBox>
#include <QWidget>

namespace ampora::ui {

namespace {

// The prompts break their lines with CR LF; a label wants a plain line feed.
QString Displayed(const std::string& text) {
    return QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

} // namespace

QtPrompts::QtPrompts(QWidget* parent, std::function<QPoint(float, float)> toGlobal)
    : parent_(parent), toGlobal_(std::move(toGlobal)) {}

void QtPrompts::ShowMessage(const std::string& text, MessageIcon icon) {
    QMessageBox box(icon == MessageIcon::Exclamation   ? QMessageBox::Warning
                    : icon == MessageIcon::Information ? QMessageBox::Information
                                                       : QMessageBox::NoIcon,
                    QStringLiteral("Ampora"), Displayed(text), QMessageBox::Ok, parent_);
    box.exec();
}

bool QtPrompts::AskYesNo(const std::string& text) {
    QMessageBox box(QMessageBox::Information, QStringLiteral("Ampora"), Displayed(text),
                    QMessageBox::Yes | QMessageBox::No, parent_);
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

std::string QtPrompts::AskText(const std::string& prompt, const std::string& defaultText,
                               float left, float top) {
    if (parent_ != nullptr) {
        parent_->repaint(); // the device being asked about is already drawn
    }
    const QPoint at = toGlobal_ ? toGlobal_(left, top) : QPoint();
    return InputBox2(parent_, Displayed(prompt), QString::fromStdString(defaultText), at)
        .toStdString();
}

} // namespace ampora::ui
