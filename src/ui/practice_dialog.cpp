#include "ui/practice_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace ampora::ui {

namespace {

QSpinBox* CountBox(QWidget* parent, const char* name, int low, int high, int value) {
    auto* box = new QSpinBox(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setRange(low, high);
    box->setValue(value);
    return box;
}

} // namespace

PracticeDialog::PracticeDialog(const PracticeShape& shape, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPractice"));
    setWindowTitle(QStringLiteral("New practice circuit"));
    setModal(true);

    nodes_ = CountBox(this, "spnNodes", kMinPracticeNodes, kMaxPracticeNodes, shape.Nodes);
    superNodes_ = CountBox(this, "spnSuperNodes", 0, kMaxPracticeSuperNodes, shape.SuperNodes);
    sources_ = CountBox(this, "spnSources", 0, kMaxPracticeSources, shape.Sources);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Nodes, the reference included:"), nodes_);
    form->addRow(QStringLiteral("Supernodes:"), superNodes_);
    form->addRow(QStringLiteral("Current sources:"), sources_);

    refusal_ = new QLabel(this);
    refusal_->setObjectName(QStringLiteral("lblRefusal"));
    refusal_->setWordWrap(true);
    refusal_->setStyleSheet(QStringLiteral("color: #b00000"));

    buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("A new circuit to name and solve, with:"), this));
    layout->addLayout(form);
    layout->addWidget(refusal_);
    layout->addWidget(buttons_);

    for (QSpinBox* box : {nodes_, superNodes_, sources_}) {
        connect(box, &QSpinBox::valueChanged, this, &PracticeDialog::ShowRefusal);
    }
    ShowRefusal();
    // Room for the longest refusal, so that the dialog does not jump as the counts change.
    refusal_->setMinimumWidth(refusal_->fontMetrics().averageCharWidth() * 44);
    refusal_->setMinimumHeight(refusal_->fontMetrics().lineSpacing() * 3);
}

PracticeShape PracticeDialog::Shape() const {
    return {nodes_->value(), superNodes_->value(), sources_->value()};
}

void PracticeDialog::ShowRefusal() {
    const std::string refusal = ShapeRefusal(Shape());
    refusal_->setText(QString::fromStdString(refusal));
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(refusal.empty());
}

} // namespace ampora::ui
