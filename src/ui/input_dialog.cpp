#include "ui/input_dialog.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace ampora::ui {

InputDialog::InputDialog(QWidget* parent, const QString& prompt, const QString& defaultText)
    : QDialog(parent), Label1_(new QLabel(prompt, this)),
      txtInput_(new QLineEdit(defaultText, this)), cmdOK_(new QPushButton(tr("OK"), this)),
      cmdCancel_(new QPushButton(tr("Cancel"), this)) {
    setWindowTitle(QStringLiteral("Ampora"));
    setObjectName(QStringLiteral("CustomInputBox"));
    Label1_->setObjectName(QStringLiteral("Label1"));
    txtInput_->setObjectName(QStringLiteral("txtInput"));
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    Label1_->setWordWrap(true);
    cmdOK_->setDefault(true); // Enter answers OK; QDialog maps Escape to reject
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1_);
    layout->addWidget(txtInput_);
    layout->addLayout(buttons);
    setMinimumWidth(320);
    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);
}

QString InputDialog::Text() const {
    return txtInput_->text();
}

void InputDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // Typing replaces the default at once.
    txtInput_->setFocus();
    txtInput_->selectAll();
}

QString InputBox2(QWidget* parent, const QString& prompt, const QString& defaultText,
                  QPoint topLeft) {
    InputDialog dialog(parent, prompt, defaultText);
    dialog.adjustSize();
    QScreen* screen = QGuiApplication::screenAt(topLeft);
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen != nullptr) {
        const QRect area = screen->availableGeometry();
        topLeft.setX(std::clamp(topLeft.x(), area.left(),
                                std::max(area.left(), area.right() - dialog.width())));
        topLeft.setY(std::clamp(topLeft.y(), area.top(),
                                std::max(area.top(), area.bottom() - dialog.height())));
    }
    dialog.move(topLeft);
    return dialog.exec() == QDialog::Accepted ? dialog.Text() : QString();
}

} // namespace ampora::ui
