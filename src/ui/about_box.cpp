#include "ui/about_box.h"

#include "ui/app_icon.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ampora::ui {

QString VersionText() {
    return QStringLiteral("Version ") + QStringLiteral(AMPORA_VERSION);
}

AboutBox::AboutBox(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About DC Ampora"));
    setModal(true);

    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("picIcon"));
    picture->setPixmap(AppIcon().pixmap(64, 64));
    picture->setAlignment(Qt::AlignTop | Qt::AlignHCenter);

    auto* product = new QLabel(QStringLiteral("DC Ampora"), this);
    product->setObjectName(QStringLiteral("lblProductName"));
    QFont large = product->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    product->setFont(large);

    auto* version = new QLabel(VersionText(), this);
    version->setObjectName(QStringLiteral("lblVersion"));

    auto* description =
        new QLabel(tr("Nodal analysis of DC circuits, explained step by step."), this);
    description->setObjectName(QStringLiteral("lblDescription"));
    description->setWordWrap(true);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("Command1"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* texts = new QVBoxLayout;
    texts->addWidget(product);
    texts->addWidget(version);
    texts->addSpacing(8);
    texts->addWidget(description);
    texts->addStretch();

    auto* top = new QHBoxLayout;
    top->setSpacing(18);
    top->addWidget(picture);
    top->addLayout(texts, 1);

    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch();
    buttonRow->addWidget(ok);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 18, 18, 14);
    layout->addLayout(top);
    layout->addSpacing(12);
    layout->addLayout(buttonRow);
    setFixedWidth(380);
}

void ShowAboutBox(QWidget* parent) {
    AboutBox box(parent);
    box.exec();
}

} // namespace ampora::ui
